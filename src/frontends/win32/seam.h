#pragma once

#include <optional>

#include "forms/front_end.h"
#include "frontends/win32/event_loop.h"

namespace tarvo::win32 {

// What the windows of a front end share.
struct Seam {
  FrontEnd& frontEnd;
  EventLoop& loop;
  int dialogs = 0;                  // messages and other dialogs of the program on the screen
  std::optional<POINT> popupPlace;  // where the next popup menu appears; at the mouse without it
};

}  // namespace tarvo::win32
