#pragma once

#include <string_view>

#include "forms/front_end.h"
#include "platform/platform.h"

namespace tarvo {

// Removes a folder with everything under it, hidden files and folders too, deepest folders first.
// A symbolic link, the folder itself included, is removed as such: what it leads to is never
// entered, changed or removed, even if links are put in the place of folders meanwhile. Shows the
// hourglass while it works.
//
// Read-only files stay, and so do those that the system refuses to remove; a folder in which
// anything stays cannot be removed, which is an error (75) and abandons everything that would have
// come after. Error 9 for a folder with more than 101 subfolders, before anything in it is removed;
// 75 when they lie more than 2,000 levels deep; 76 when there is no such folder.
void DeleteFolderTree(Platform& platform, FrontEnd& frontEnd, std::string_view pth);

}  // namespace tarvo
