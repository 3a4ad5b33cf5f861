#pragma once

#include <string>
#include <string_view>

#include "app/globals/globals.h"
#include "catalogue/main_window.h"

namespace tarvo {

// Starts the viewer program "winhlp32.exe" of LumetProgramPath on a help file, or says that this
// failed, when the setting "Vista" is exactly "yes". False when it is not: the caller then opens
// the help itself.
bool ShowHelpWithViewer(Globals& globals, std::string_view helpFile);

// Whether a file has the classic binary help format, which only the system's own viewer shows.
bool IsClassicHelp(Platform& platform, const std::string& file);

// Opens the registered help file at its contents or at the search by keyword. Without one, says so;
// a failure is shown by its description.
void ShowRegisteredHelp(Globals& globals, MainWindow& window, HelpCommand command);

}  // namespace tarvo
