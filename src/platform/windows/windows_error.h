#pragma once

#include <windows.h>

#include <string_view>

#include "base/runtime_error.h"

namespace tarvo {

// Codes of the system that some compilers' headers lack.
inline constexpr DWORD kElevationRequired = 740;
inline constexpr DWORD kDiskQuotaExceeded = 1295;
inline constexpr DWORD kDirectoryNotSupported = 336;

// The error for a code of the system (GetLastError). `subject`, when not empty, names the file or
// folder and is appended to the description.
RuntimeError ErrorFromCode(DWORD code, std::string_view subject = {});

// The same for a call that needs the folder `path` to exist: what is missing is a path (76), not a
// file.
RuntimeError FolderErrorFromCode(DWORD code, std::string_view path);

}  // namespace tarvo
