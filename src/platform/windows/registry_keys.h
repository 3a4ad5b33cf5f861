#pragma once

#include <string_view>

#include "platform/registry.h"

namespace tarvo {

// Keys of the system registry, with all texts in the system's ANSI code page there; see the
// functions of Platform with similar names.
OpenedKey OpenWindowsKey(RegistryRoot root, std::string_view path, RegistryAccess access);
OpenedKey MakeWindowsKey(RegistryRoot root, std::string_view path);

// See Platform::DeleteProgramSettings: the user's settings of programs are keys below
// "Software\VB and VBA Program Settings". Throws 5 when there is no such section, or no such
// application.
void DeleteWindowsProgramSettings(std::string_view application, std::string_view section);

}  // namespace tarvo
