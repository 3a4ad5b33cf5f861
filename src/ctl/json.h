#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvo {

// The text as a JSON string with its quotes (RFC 8259): always valid UTF-8, with U+FFFD for bytes
// that are not; quotes, backslashes and control characters are escaped.
std::string JsonString(std::string_view text);

// Rows of texts as an array of objects, one to a line, with a line end; the first row names the
// members.
std::string JsonTable(const std::vector<std::vector<std::string>>& rows);

}  // namespace tarvo
