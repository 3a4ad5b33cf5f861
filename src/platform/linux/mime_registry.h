#pragma once

#include <string_view>

#include "platform/registry.h"

namespace tarvo {

// The system registry's classes root over the desktop's MIME applications; see
// Platform::OpenRegistryKey. Letter case in paths counts only in the names of classes. There are:
// - ".csv": its default value is the default application of text/csv (see mime_apps.h), the name of
//   its desktop file without ".desktop". "csvFile" counts though it is not installed, when the
//   user's own files name it: the choice was made, and that the viewer is missing is then told by
//   the key of its command. Writing makes an application the default in the user's own
//   "mimeapps.list", and in the user's file for the desktop that runs where that names another.
// - "<class>\shell\open\command": its default value is the Exec line of "<class>.desktop". It
//   cannot be written.
// Neither key is there without its value, and there are no others.
OpenedKey OpenMimeKey(RegistryRoot root, std::string_view path, RegistryAccess access);
OpenedKey MakeMimeKey(RegistryRoot root, std::string_view path);

}  // namespace tarvo
