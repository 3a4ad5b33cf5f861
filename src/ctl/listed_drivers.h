#pragma once

#include <string_view>

#include "app/globals/globals.h"
#include "catalogue/main_window.h"

namespace tarvo {

inline constexpr std::string_view kDictionary = "TARVO.DIC";

// The main window's state with the list that the window would show, but without its handlers: a
// command must leave the window's own settings alone. Makes the data folder current.
class ListedDrivers : public MainWindow {
 public:
  explicit ListedDrivers(Globals& globals);
};

}  // namespace tarvo
