#pragma once

#include <string_view>

#include "platform/platform.h"

namespace tarvo {

// Copies a file into a folder under its bare name, replacing a file of that name in any letter case
// in one step. A link of that name is replaced, not followed. Raises what reading and writing
// raise; a copy that is not complete is removed again.
void CopyIntoFolder(Platform& platform, std::string_view file, std::string_view folder);

}  // namespace tarvo
