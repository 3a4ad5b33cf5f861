#pragma once

#include <string>

#include "platform/platform.h"

namespace tarvo::win32 {

// Shows the message of the error that ends the program.
void ShowFailure(const std::string& message, const std::string& title);

// One run of the program from start to end; gives the exit code. An error that nothing handles is
// shown in a message box: then it is 1.
int RunProgram(Platform& platform, const std::string& arguments);

}  // namespace tarvo::win32
