#pragma once

#include <iostream>
#include <string>
#include <vector>

#include "platform/platform.h"

namespace tarvo {

// Exit codes of the terminal program.
inline constexpr int kSuccess = 0;
inline constexpr int kFailed = 1;  // or not found
inline constexpr int kWrongUsage = 2;

// Runs one command of the terminal program and returns its exit code. Results go to `out`, an error
// as one plain sentence to `err`, and questions too, whose answers come from `in`. `arguments` does
// not hold the program's own name.
int RunTerminalProgram(Platform& platform, const std::vector<std::string>& arguments,
                       std::ostream& out, std::ostream& err, std::istream& in = std::cin);

}  // namespace tarvo
