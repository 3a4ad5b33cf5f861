#pragma once

#include <string>
#include <string_view>

namespace tarvo {

// The process's current folder and drive; see the functions of Platform with the same names. The
// system lets only folders be current whose paths have fewer than 259 characters; another one is a
// bad name (52).
std::string WindowsCurrentFolder();
void ChangeWindowsCurrentFolder(std::string_view path);
void ChangeWindowsCurrentDrive(char32_t letter);

}  // namespace tarvo
