#pragma once

#include <string>
#include <string_view>

namespace tarvo {

// The text as a JSON string with its quotes (RFC 8259): always valid UTF-8, with U+FFFD for bytes
// that are not; quotes, backslashes and control characters are escaped.
std::string JsonString(std::string_view text);

}  // namespace tarvo
