#pragma once

#include <functional>
#include <string>

#include "app/start/tarvo.h"
#include "frontends/qt/qt_front_end.h"

namespace tarvo::qt {

// The program's arguments, without its own name, joined by one blank each.
std::string JoinArguments(int count, const char* const* arguments);

// One run of the program from start to end; gives the exit code. An error that nothing handles is
// written to the standard error and shown in a message box: then it is 1.
int RunProgram(Platform& platform, const std::string& arguments);

}  // namespace tarvo::qt
