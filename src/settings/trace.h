#pragma once

#include <string_view>

namespace tarvo {

// Writes a line on standard error in debug builds; does nothing in release builds.
void Trace(std::string_view text);

}  // namespace tarvo
