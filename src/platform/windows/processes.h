#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/platform.h"

namespace tarvo {

// Starts a program or a script (".bat", ".cmd"); see Platform::StartProcess. A program for consoles
// gets a console of its own. One that needs the rights of an administrator asks the user for them.
int StartWindowsProcess(std::string_view program, const std::vector<std::string>& arguments,
                        StartWindow window);

// Starts a program of the system with a command line as it stands, which nothing keeps.
void StartCommandLine(const std::wstring& program, std::wstring commandLine);

// Whether a started process still runs; see Platform::ProcessLives.
bool WindowsProcessLives(int process);

}  // namespace tarvo
