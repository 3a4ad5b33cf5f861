#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/platform.h"

namespace tarvo {

// File names match without regard to letter case on every system, because drivers are made on
// systems where case does not matter. Every look-up of a name and every listing by pattern goes
// through these functions.

// The path with every name spelt as it stands on the disk: an exact match wins over one that
// differs in letter case; a name that names nothing stays as it is, and so does one that the system
// itself finds in any letter case.
std::string ResolveName(Platform& platform, std::string_view path);

// Whether a path names a folder, a file of any kind, in any letter case. Hidden
// ones count.
bool FolderExists(Platform& platform, std::string_view path);
bool FileExists(Platform& platform, std::string_view path);

// The names in a folder that match a pattern, in the system's order: plain files always; read-only
// ones too; hidden ones only with kHidden, folders (and links to folders) only with kDirectory in
// `attributes`.
std::vector<FolderEntry> ListFolder(Platform& platform, std::string_view folder,
                                    std::string_view pattern, unsigned attributes);

// The whole content of a file, found in any letter case; throws 53 when it is missing.
std::string ReadWholeFile(Platform& platform, std::string_view path);

}  // namespace tarvo
