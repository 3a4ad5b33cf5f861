#pragma once

#include <string>
#include <string_view>

namespace tarvo::win32 {

// The program's text as the system takes it, with U+FFFD for bytes that are no UTF-8.
std::wstring Wide(std::string_view text);

// The same with a carriage return, alone or before a line feed, as a line break.
std::wstring WideLines(std::string_view text);

// A caption with "&" before its access key, as menus and buttons take it.
std::wstring WideCaption(std::string_view caption);

// The program's own text; what is no Unicode becomes U+FFFD.
std::string Narrow(std::wstring_view text);

}  // namespace tarvo::win32
