#pragma once

#include <optional>
#include <string>

#include "app/start/tarvo.h"
#include "frontends/qt/qt_front_end.h"

namespace tarvo::qt {

// The program's arguments, without its own name, joined by one blank each.
std::string JoinArguments(int count, const char* const* arguments);

// One run from start to end that needs no window, no display and no application object: the report
// of the tools' versions. Gives the message of the error that ended it, "" without one; nothing,
// having done nothing, for arguments that ask for windows.
std::optional<std::string> RunWithoutWindows(Platform& platform, const std::string& arguments);

// Shows the message of the error that ends the program. Needs the application object.
void ShowFailure(const std::string& message, const std::string& title);

// One run of the program from start to end; gives the exit code. An error that nothing handles is
// written to the standard error and shown in a message box: then it is 1.
int RunProgram(Platform& platform, const std::string& arguments);

}  // namespace tarvo::qt
