#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvo {

// Starts a program; see Platform::StartProcess. Programs for Windows are told by their first bytes
// and run through "wine".
int StartLinuxProcess(std::string_view program, const std::vector<std::string>& arguments);

// Whether a started process still runs; see Platform::ProcessLives.
bool LinuxProcessLives(int process);

}  // namespace tarvo
