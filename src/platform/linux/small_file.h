#pragma once

#include <functional>
#include <optional>
#include <string>

namespace tarvo {

// Small text files of the desktop that belong to the user and to other programs too.

// What reading such a file gave.
struct SmallFile {
  std::optional<std::string> content;  // all its bytes; nothing when it is missing or unreadable
  bool isMissing = false;
};

// Reads a whole file; one of more than 16 MiB, or that is none (a folder, a pipe), is unreadable.
SmallFile ReadSmallFile(const std::string& path);

// Where the file is that a path names: the path itself, or where the symbolic link of that name
// leads, which need not exist; "" for links in a circle.
std::string FollowLinks(std::string path);

// What came of replacing a file.
enum class Replacing { kDone, kDenied, kFailed };

// Whether ReplaceSmallFile would be let write: kDenied for a file or folder that may not be
// written.
Replacing MayReplaceSmallFile(const std::string& path);

// Gives a file the content that `edit` makes of its bytes ("" when it is missing), in one step:
// whoever looks finds the old file or the whole new one, after a crash too, and its modes stay. A
// symbolic link stays, and what it leads to is replaced. A missing file is made with its folders. A
// change that another program makes meanwhile is edited in its turn, not overwritten. When it
// fails, the file is as it was.
Replacing ReplaceSmallFile(const std::string& path,
                           const std::function<std::string(const std::string&)>& edit);

}  // namespace tarvo
