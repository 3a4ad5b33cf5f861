#pragma once

#include <string_view>

namespace tarvo {

// Making, renaming and removing; see the functions of Platform with the same names.
void MakeWindowsFolder(std::string_view path);
void RenameWindowsFile(std::string_view path, std::string_view newPath);
void RemoveWindowsFile(std::string_view path);
void RemoveWindowsFolder(std::string_view path);

}  // namespace tarvo
