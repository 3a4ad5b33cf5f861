#pragma once

#include <memory>
#include <string_view>

#include "platform/platform.h"

namespace tarvo {

// Takes hold of a folder; see Platform::HoldFolder.
std::unique_ptr<HeldFolder> HoldWindowsFolder(std::string_view path);

}  // namespace tarvo
