#include "platform/linux/desktop_entry.h"

#include <sys/stat.h>
#include <unistd.h>

#include "base/paths.h"
#include "platform/linux/key_file.h"
#include "platform/linux/small_file.h"
#include "platform/linux/xdg_folders.h"

namespace tarvo {
namespace {

constexpr std::string_view kGroup = "Desktop Entry";

bool IsKind(const std::string& path, mode_t kind) {
  struct stat status;
  return ::stat(path.c_str(), &status) == 0 && (status.st_mode & S_IFMT) == kind;
}

// The file that an identifier names below a folder; "" when there is none. Each "-" may stand for
// the "/" behind a sub-folder's name.
std::string FileOfId(const std::string& folder, std::string_view id) {
  std::string path = JoinPath(folder, id);
  if (IsKind(path, S_IFREG)) return path;
  for (std::size_t dash = id.find('-'); dash != id.npos; dash = id.find('-', dash + 1)) {
    const std::string_view name = id.substr(0, dash);
    const std::string_view rest = id.substr(dash + 1);
    if (name.empty() || name == "." || name == ".." || rest.empty()) continue;
    const std::string subfolder = JoinPath(folder, name);
    if (!IsKind(subfolder, S_IFDIR)) continue;
    path = FileOfId(subfolder, rest);
    if (!path.empty()) return path;
  }
  return {};
}

bool ProgramIsThere(const std::string& program) {
  if (program.find('/') == program.npos) return !FindProgram(program).empty();
  return ::access(program.c_str(), X_OK) == 0;
}

std::optional<DesktopEntry> ReadEntry(const std::string& path, std::string dataFolder) {
  const std::optional<std::string> text = ReadSmallFile(path).content;
  if (!text) return std::nullopt;
  const std::vector<KeyFileLine> lines = KeyFileLines(*text);
  if (KeyFileValue(lines, kGroup, "Hidden") == "true") return std::nullopt;
  const auto tried = KeyFileValue(lines, kGroup, "TryExec");
  if (tried && !tried->empty() && !ProgramIsThere(KeyFileString(*tried))) return std::nullopt;
  const auto exec = KeyFileValue(lines, kGroup, "Exec");
  if (!exec || exec->empty()) return std::nullopt;
  return DesktopEntry{std::move(dataFolder), KeyFileString(*exec)};
}

}  // namespace

std::optional<DesktopEntry> FindDesktopEntry(std::string_view id) {
  if (id.find('/') != id.npos || id.find('\0') != id.npos) return std::nullopt;
  for (const std::string& folder : DataFolders()) {
    const std::string path = FileOfId(JoinPath(folder, "applications"), id);
    if (!path.empty()) return ReadEntry(path, folder);
  }
  return std::nullopt;
}

}  // namespace tarvo
