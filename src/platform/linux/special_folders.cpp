#include "platform/linux/special_folders.h"

#include <unistd.h>

#include <fstream>
#include <string_view>

#include "base/paths.h"
#include "platform/linux/xdg_folders.h"

namespace tarvo {
namespace {

constexpr const char* kSharedDocuments = "/var/lib/tarvo/documents";

std::string WithoutEndSlash(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

// The folder that a line XDG_DOCUMENTS_DIR="..." names; "" for any other line. The format allows an
// absolute path or one that begins with $HOME, with a backslash before special characters.
std::string DocumentsOfLine(std::string_view line, const std::string& home) {
  constexpr std::string_view kStart = "XDG_DOCUMENTS_DIR=\"";
  const std::size_t start = line.find_first_not_of(" \t");
  if (start == std::string_view::npos || line.compare(start, kStart.size(), kStart) != 0) return {};
  std::string value;
  for (std::size_t i = start + kStart.size(); i < line.size() && line[i] != '"'; ++i) {
    if (line[i] == '\\' && i + 1 < line.size()) ++i;
    value += line[i];
  }
  constexpr std::string_view kHome = "$HOME";
  const bool inHome = value.compare(0, kHome.size(), kHome) == 0 &&
                      (value.size() == kHome.size() || value[kHome.size()] == '/');
  if (inHome) return home + value.substr(kHome.size());
  return value.compare(0, 1, "/") == 0 ? value : std::string{};
}

std::string ConfiguredDocuments(const std::string& home) {
  std::string config = EnvironmentValue("XDG_CONFIG_HOME");
  if (config.empty() || config[0] != '/') config = home + "/.config";
  std::ifstream file(config + "/user-dirs.dirs");
  std::string result;
  for (std::string line; std::getline(file, line);) {
    const std::string folder = DocumentsOfLine(line, home);
    if (!folder.empty()) result = folder;
  }
  return result;
}

}  // namespace

std::optional<std::string> CommonDocumentsFolder(const std::string& startFolder) {
  const std::string chosen = EnvironmentValue("TARVO_COMMON_DOCUMENTS");
  if (!chosen.empty()) {
    return WithoutEndSlash(chosen[0] == '/' ? chosen : JoinPath(startFolder, chosen));
  }
  if (::access(kSharedDocuments, W_OK | X_OK) == 0) return kSharedDocuments;
  return std::nullopt;
}

std::optional<std::string> UserDocumentsFolder() {
  const std::string home = HomeFolder();
  if (home.empty()) return std::nullopt;
  const std::string configured = ConfiguredDocuments(home);
  return WithoutEndSlash(configured.empty() ? home + "/Documents" : configured);
}

}  // namespace tarvo
