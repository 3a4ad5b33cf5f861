#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvo {

// Where the user's and the system's files are, by the XDG Base Directory Specification: a variable
// that is empty, or names no absolute path, counts as not set. All paths are absolute and without a
// separator at their end.

// The environment variable's value; "" when it is not set.
std::string EnvironmentValue(const char* name);

// $HOME, else the home folder of the user's account; "" when there is none.
std::string HomeFolder();

// $XDG_CONFIG_HOME, else ~/.config; "" without a home folder. After it, those of $XDG_CONFIG_DIRS.
std::string ConfigHome();
std::vector<std::string> SystemConfigFolders();

// $XDG_DATA_HOME, else ~/.local/share, then those of $XDG_DATA_DIRS: all folders of data, the most
// important first.
std::vector<std::string> DataFolders();

// The names of the current desktop ($XDG_CURRENT_DESKTOP) in lower case, the most specific first;
// without names that could not be part of a file's name.
std::vector<std::string> CurrentDesktops();

// The path of a program, the first that may be executed in the folders of $PATH, or in the usual
// ones where that is not set; "" when there is none. Relative folders do not count: they would make
// a program of whatever lies in the current folder, which is the data folder.
std::string FindProgram(std::string_view name);

}  // namespace tarvo
