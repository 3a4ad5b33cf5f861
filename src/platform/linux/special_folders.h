#pragma once

#include <optional>
#include <string>

namespace tarvo {

// The common documents folder: $TARVO_COMMON_DOCUMENTS when set (portable use; a relative path
// starts at `startFolder`, because the current folder changes); else /var/lib/tarvo/documents when
// it exists and may be written; else nothing.
std::optional<std::string> CommonDocumentsFolder(const std::string& startFolder);

// The user's documents folder: XDG_DOCUMENTS_DIR of user-dirs.dirs (xdg-user-dirs), else
// ~/Documents. Nothing without a home folder.
std::optional<std::string> UserDocumentsFolder();

}  // namespace tarvo
