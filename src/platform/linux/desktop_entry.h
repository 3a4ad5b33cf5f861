#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarvo {

// An application as its desktop file describes it (Desktop Entry Specification).
struct DesktopEntry {
  std::string dataFolder;  // the folder of data in whose "applications" the file is
  std::string exec;        // the command line of "Exec", its string escapes replaced
};

// The application with a desktop file identifier: "foo-bar.desktop" is the file "foo-bar.desktop"
// or "foo/bar.desktop" below "applications" in the first folder of data that has one. Nothing when
// there is none, when that file is hidden (Hidden=true: as if it were deleted, in later folders
// too), cannot be read, or has no "Exec", or when the program of its "TryExec" is missing.
std::optional<DesktopEntry> FindDesktopEntry(std::string_view id);

}  // namespace tarvo
