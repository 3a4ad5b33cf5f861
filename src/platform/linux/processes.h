#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvo {

// Starts a program; see Platform::StartProcess. It leads a session of its own, whose identifier is
// the process's. Programs for Windows are run through wine; where wine lacks what they need, the
// error (53) names the program and what is missing. A working folder other than the current one
// needs a program with an absolute path; 76 when it is missing.
int StartLinuxProcess(std::string_view program, const std::vector<std::string>& arguments,
                      std::string_view workingFolder = {});

// Whether a started process still runs; see Platform::ProcessLives.
bool LinuxProcessLives(int process);

}  // namespace tarvo
