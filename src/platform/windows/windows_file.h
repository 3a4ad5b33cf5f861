#pragma once

#include <memory>
#include <string_view>

#include "platform/file.h"

namespace tarvo {

// Opens a file that others may read, write, rename and remove meanwhile; see Platform::OpenFile.
std::unique_ptr<File> OpenWindowsFile(std::string_view path, OpenFor use);

// Makes a file that does not exist yet; see Platform::MakeFile. What may be executed is told here
// by a file's name.
std::unique_ptr<File> MakeWindowsFile(std::string_view path);

}  // namespace tarvo
