#pragma once

#include <string>
#include <string_view>

#include "app/globals/globals.h"
#include "catalogue/main_window.h"

namespace tarvo {

// Starts a driver's "Download.EXE" and waits for its end while the windows stay live, bringing it
// to the front every two seconds; then shows the newest file that it wrote and refreshes the
// selected item of the list, which may be another one by then. Where the tool cannot be started,
// nothing is shown, the watch stays on and the item is refreshed. Downloads may run one inside the
// other: the outer wait ends after the inner one. When the main window is closed meanwhile, returns
// at once and touches nothing.
//
// Failures are passed over, but for error 76 when the current folder has vanished.
void RunDownload(Globals& globals, MainWindow& window, const std::string& driver);

// Starts another tool of a driver, which nothing waits for. Raises what starting it raises.
void StartTool(Platform& platform, const std::string& driver, std::string_view tool);

// Opens a driver's folder "Data", or its own where it has none, in the system's file manager.
// Raises what that raises.
void OpenDriver(Platform& platform, const std::string& driver);

}  // namespace tarvo
