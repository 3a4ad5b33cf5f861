#pragma once

#include <string_view>

namespace tarvo {

// What the user's desktop does for the program; see the functions of Platform with these names. The
// file manager is asked over the session bus (the interface org.freedesktop.FileManager1); where
// none answers there, "xdg-open" opens the folder.
void OpenFolderOnDesktop(std::string_view folder);
void ShowFileOnDesktop(std::string_view file);
void OpenByVerbOnDesktop(std::string_view path, std::string_view workingFolder);
void OpenClassicHelpOnDesktop(std::string_view file);

}  // namespace tarvo
