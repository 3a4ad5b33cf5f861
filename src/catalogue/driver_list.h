#pragma once

#include <string>
#include <string_view>

#include "app/globals/globals.h"
#include "catalogue/main_window.h"

namespace tarvo {

// The key of the list's first item, which adds a driver.
inline constexpr const char* kAddItemKey = "Add";

// The mode of UpdateDriverList that refreshes the selected item only.
inline constexpr const char* kCurrentDriver = "CURRENT";

// Builds the driver list from the folders in `Drivers`, or, with mode "CURRENT", refreshes the
// counts and versions of the selected item and nothing else (nothing at all without a selection).
// While it works the current folder is `Drivers`; afterwards it is the folder that holds `Drivers`.
// Errors in reading one driver are tolerated: the columns that could not be read stay as they were,
// which is empty in a rebuilt list. Other errors are raised, and leave the current folder where it
// was then.
void UpdateDriverList(Globals& globals, MainWindow& window, std::string_view mode = {});

// The same for a command that passes over failures and whose run goes on: after one the process is
// in the folder where it was, so that the next command finds the drivers again.
void TryUpdateDriverList(Globals& globals, MainWindow& window, std::string_view mode = {});

}  // namespace tarvo
