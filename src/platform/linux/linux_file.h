#pragma once

#include <memory>
#include <string_view>

#include "platform/file.h"

namespace tarvo {

// Opens a file through the system's calls; see Platform::OpenFile.
std::unique_ptr<File> OpenLinuxFile(std::string_view path, OpenFor use);

// Makes a file that does not exist yet; see Platform::MakeFile.
std::unique_ptr<File> MakeLinuxFile(std::string_view path, FileUse use);

}  // namespace tarvo
