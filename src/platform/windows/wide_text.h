#pragma once

#include <string>
#include <string_view>

namespace tarvo {

// Text between UTF-8, which the program uses, and UTF-16, which the system's wide calls take. A
// surrogate that stands alone, as file names may hold it, becomes the three bytes that UTF-8 would
// have for it, and these become the surrogate again, so that every name of a file survives.

std::string Narrow(std::wstring_view text);

// Any other byte that is not part of valid UTF-8 becomes U+FFFD.
std::wstring Wide(std::string_view utf8);

// Whether Wide gives every byte of the text its due.
bool IsWhole(std::string_view utf8);

}  // namespace tarvo
