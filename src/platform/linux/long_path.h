#pragma once

#include <fcntl.h>

#include <string>
#include <string_view>

#include "base/runtime_error.h"
#include "platform/linux/descriptor.h"

namespace tarvo {

// A path in the form that the system's *at calls take. The system refuses paths of PATH_MAX (4096)
// bytes and more, so the front of a longer one has been entered already. Of a path below a held
// folder all but the last name has been entered, without following any link.
struct ReachedPath {
  Descriptor folder;    // where `rest` starts; none for an ordinary path
  int held = AT_FDCWD;  // where it starts otherwise
  bool isHeld = false;  // whether it lies below a held folder
  std::string rest;     // shorter than PATH_MAX

  int Base() const { return folder.Get() < 0 ? held : folder.Get(); }

  // What makes a call refuse a link in the place of the last name, where that must not be followed.
  int NoLink() const { return isHeld ? O_NOFOLLOW : 0; }
};

// Throws 52 for a path with a NUL or with a name that no folder can hold, 76 or 70 when its front
// cannot be entered.
ReachedPath ReachPath(std::string_view path);

// Opens a folder to pass through it, not to list it. Throws as ReachPath; 76 for what is no folder.
Descriptor ReachFolder(std::string_view path);

// The error of a call that needs the folder `path` to exist: as ErrorFromErrno, but what
// is missing is a path (76), not a file.
RuntimeError FolderError(int code, std::string_view path);

// The error of a call on a file: as ErrorFromErrno, but when the folder that should hold
// the file is missing too, what is missing is a path (76). The system says the same for both.
RuntimeError FileError(int code, const ReachedPath& reached, std::string_view path);

}  // namespace tarvo
