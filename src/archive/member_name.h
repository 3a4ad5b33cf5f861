#pragma once

#include <string>
#include <string_view>

namespace tarvo {

// The longest name of one file or folder that systems hold, and of a whole path in a package, in
// bytes.
inline constexpr std::size_t kLongestName = 255;
inline constexpr std::size_t kLongestPath = 4096;

// The UTF-8 text of a name in code page 437, which archives use for names that are not UTF-8.
std::string DecodeCodePage437(std::string_view bytes);

// Whether every byte belongs to valid UTF-8.
bool IsUtf8(std::string_view text);

// A member's name as a path below the driver's folder.
struct MemberPath {
  std::string path;  // names with "/" between; "" for the folder itself
  bool isFolder;
};

// The path that a member's name means. Backslashes separate like slashes; a separator at the end
// makes it a folder; "." is passed over. Throws InvalidPackage for a name that is empty, absolute
// or too long, or that holds "..", a drive letter, an empty name, a control character or the name
// of an unfinished file.
MemberPath PathOfMember(std::string_view name);

}  // namespace tarvo
