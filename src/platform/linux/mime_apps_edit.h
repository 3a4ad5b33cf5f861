#pragma once

#include <string>
#include <string_view>

namespace tarvo {

// Whether a text can be the identifier of a desktop file in a list: "name.desktop" without
// separators of paths and lists, backslashes, control characters and a blank at its beginning.
bool IsDesktopFileId(std::string_view id);

// Which lines WithDefaultApplication may write.
enum class DefaultLine {
  kAlways,       // a line for the type is added when there is none
  kWhenThereIs,  // only lines that are there are changed
};

// The text of a "mimeapps.list" with an application made the default of a type: each line of the
// type in [Default Applications] names the application alone, so that every reader finds the same,
// and lists of the type in [Removed Associations] no longer have it. A line is added where the
// first group [Default Applications] ends, or behind the text with a group of its own, with the
// line ends that are used there. All other bytes stay as they are, whatever they are.
std::string WithDefaultApplication(std::string_view text, std::string_view mimeType,
                                   std::string_view id, DefaultLine use);

}  // namespace tarvo
