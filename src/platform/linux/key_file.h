#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo {

// One line of a file in the format of desktop entries (Desktop Entry Specification): "[Group]",
// "Key=Value", a comment, or anything else. All views lead into the file's text.
struct KeyFileLine {
  enum class Kind { kGroup, kEntry, kOther };

  Kind kind = Kind::kOther;
  std::string_view whole;  // with its line end
  std::string_view end;    // "\n", "\r\n", or "" for a last line without one
  std::string_view group;  // the group that the line begins or stands in, "" before the first
  std::string_view key;    // of an entry
  std::string_view value;  // of an entry, escapes as they stand, without blanks around it
};

// The lines of such a file, of whatever bytes it consists: joined, their `whole`s are the text. A
// line that begins a group and is malformed begins one without a name.
std::vector<KeyFileLine> KeyFileLines(std::string_view text);

// The value of a key; of several the last, as in the desktops' own readers. Nothing when there is
// none.
std::optional<std::string_view> KeyFileValue(const std::vector<KeyFileLine>& lines,
                                             std::string_view group, std::string_view key);

// A value of type "string" with its escapes \s \n \t \r \\ replaced; another backslash stands for
// itself.
std::string KeyFileString(std::string_view value);

// The items of a list, separated by ";", without empty ones and without blanks around them.
std::vector<std::string> KeyFileList(std::string_view value);

}  // namespace tarvo
