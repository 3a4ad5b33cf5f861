#pragma once

#include <sys/stat.h>

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/linux/descriptor.h"

namespace tarvo {

// What tells a file or folder from all others while it exists, whatever it is called.
// That is its device and its number on the device.
using FileIdentity = std::pair<dev_t, ino_t>;

FileIdentity IdentityOf(const struct stat& status);

// A folder that a walk has come to.
struct WalkedFolder {
  std::string path;  // from the folder that the walk began in; "" for that folder
  FileIdentity identity;
  FileIdentity parent;  // of the folder that it lies in; none for where the walk began
  const Descriptor& descriptor;
};

// Walks a folder and everything below it. Hidden names are left out, symbolic links are neither
// followed nor reported; of files only regular ones are reported. Each folder is reported before it
// is listed, and before anything in it. Folders below that cannot be read are left out; throws when
// the first one cannot (76 when it is missing). Paths may be of any length.
void WalkVisibleTree(std::string_view root,
                     const std::function<void(const WalkedFolder&)>& onFolder,
                     const std::function<void(const WalkedFolder&, const std::string& name,
                                              const struct stat&)>& onFile);

}  // namespace tarvo
