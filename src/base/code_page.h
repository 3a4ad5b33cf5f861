#pragma once

#include <string>
#include <string_view>

namespace tarvo {

// Windows-1252, the Western single-byte code page: one byte for each character. The five byte
// values that the code page leaves undefined stand for the control characters of the same value, so
// every byte decodes and encodes back to itself.

// The text in the code page. A character that the code page lacks becomes "?".
std::string EncodeWindows1252(std::string_view utf8);

// The UTF-8 text of bytes in the code page.
std::string DecodeWindows1252(std::string_view bytes);

}  // namespace tarvo
