#pragma once

#include <QPoint>
#include <optional>

#include "forms/front_end.h"
#include "frontends/qt/dispatcher.h"

namespace tarvo::qt {

// What the windows of a front end share.
struct Seam {
  FrontEnd& frontEnd;
  Dispatcher& dispatcher;
  int dialogs = 0;                   // messages and other dialogs of the program on the screen
  std::optional<QPoint> popupPlace;  // where the next popup menu appears; at the mouse without it
};

}  // namespace tarvo::qt
