#pragma once

#include <string>

#include "app/globals/globals.h"
#include "catalogue/main_window.h"

namespace tarvo {

// Removes a driver with every data file that its tools downloaded, after a first question and, when
// it has downloads, a second one with their number. "No" to either changes nothing, and gives
// false.
//
// Counting the downloads raises what it meets (error 9 for a folder with more than 101 subfolders),
// before anything is asked; a driver that is a symbolic link has none, since only the link is
// removed. Failures to remove are passed over: the list is rebuilt from what remains.
bool RemoveDriver(Globals& globals, MainWindow& window, const std::string& name);

}  // namespace tarvo
