#pragma once

#include <string>

#include "app/start/tarvo.h"
#include "frontends/qt/qt_front_end.h"

namespace tarvo::qt {

// Shows the message of the error that ends the program. Needs the application object.
void ShowFailure(const std::string& message, const std::string& title);

// One run of the program from start to end; gives the exit code. An error that nothing handles is
// written to the standard error and shown in a message box: then it is 1.
int RunProgram(Platform& platform, const std::string& arguments);

}  // namespace tarvo::qt
