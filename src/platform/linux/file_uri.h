#pragma once

#include <string>
#include <string_view>

namespace tarvo {

// The "file" URI (RFC 8089) of an absolute path of any bytes: all but letters, digits, "-", ".",
// "_", "~" and "/" are percent-encoded.
std::string FileUri(std::string_view absolutePath);

}  // namespace tarvo
