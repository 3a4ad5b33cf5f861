#pragma once

#include "catalogue/main_window.h"
#include "forms/list_view.h"
#include "platform/platform.h"

namespace tarvo {

// Which commands are available is kept in the menu entries, not derived when it is asked for: a
// rebuild of the list leaves the toolbar's buttons as they were until the next selection.

// Nothing is selected: disables the commands on a driver, save the mobile installation, which keeps
// its state until the next selection. Shows the mobile-device command only where the base directory
// holds a folder "Win32Device".
void ResetMenu(Platform& platform, MainWindow& window);

// An item has been selected: looks at the driver's folder and sets the commands that it allows. For
// the item that adds a driver it looks at a folder called "Add", which as a rule is not there.
void AllowCommandsOf(Platform& platform, MainWindow& window, const ListItem& item);

// Copies the states of download, upload and properties from the menu to the toolbar.
void ButtonControl(MainWindow& window);

}  // namespace tarvo
