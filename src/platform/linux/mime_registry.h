#pragma once

#include <string_view>

#include "platform/registry.h"

namespace tarvo {

// The system registry's classes root over the desktop's MIME applications; see
// Platform::OpenRegistryKey. The key ".csv" has as its default value the default application of
// text/csv, the name of its desktop file without ".desktop", and "<class>\shell\open\command" the
// Exec line of that desktop file.
OpenedKey OpenMimeKey(RegistryRoot root, std::string_view path, RegistryAccess access);
OpenedKey MakeMimeKey(RegistryRoot root, std::string_view path);

}  // namespace tarvo
