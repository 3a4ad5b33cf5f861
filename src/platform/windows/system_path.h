#pragma once

#include <string>
#include <string_view>

namespace tarvo {

// A path as the system's wide calls take it: absolute, in the form "\\?\", which may be of any
// length. "" stays "", which the system takes for a missing path. Throws 52 for a path with a NUL,
// for one that is no text, for one with a name of more than 255 characters, and
// for one that names a device ("NUL").
std::wstring SystemPath(std::string_view path);

// The path as people write it: the text of a system's path without "\\?\".
std::string PlainPath(std::wstring_view path);

}  // namespace tarvo
