#include "platform/linux/xdg_folders.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "base/paths.h"

namespace tarvo {
namespace {

constexpr const char* kStandardProgramFolders = "/usr/local/bin:/usr/bin:/bin";

std::vector<std::string> SplitAtColons(std::string_view list) {
  std::vector<std::string> items;
  while (!list.empty()) {
    const std::size_t size = std::min(list.find(':'), list.size());
    if (size > 0) items.emplace_back(list.substr(0, size));
    list.remove_prefix(std::min(size + 1, list.size()));
  }
  return items;
}

std::string WithoutEndSlash(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

std::string HomeBased(const char* variable, std::string_view inHome) {
  std::string folder = EnvironmentValue(variable);
  if (folder.starts_with('/')) return WithoutEndSlash(std::move(folder));
  const std::string home = HomeFolder();
  return home.starts_with('/') ? JoinPath(WithoutEndSlash(home), inHome) : "";
}

std::vector<std::string> SystemFolders(const char* variable, std::string_view standard) {
  std::vector<std::string> folders;
  for (std::string& folder : SplitAtColons(EnvironmentValue(variable))) {
    if (folder.starts_with('/')) folders.push_back(WithoutEndSlash(std::move(folder)));
  }
  return folders.empty() ? SplitAtColons(standard) : folders;
}

}  // namespace

std::string EnvironmentValue(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

std::string HomeFolder() {
  std::string home = EnvironmentValue("HOME");
  if (!home.empty()) return home;
  const passwd* user = ::getpwuid(::getuid());
  return user && user->pw_dir ? user->pw_dir : "";
}

std::string ConfigHome() { return HomeBased("XDG_CONFIG_HOME", ".config"); }

std::vector<std::string> SystemConfigFolders() {
  return SystemFolders("XDG_CONFIG_DIRS", "/etc/xdg");
}

std::vector<std::string> DataFolders() {
  std::vector<std::string> folders = SystemFolders("XDG_DATA_DIRS", "/usr/local/share:/usr/share");
  std::string own = HomeBased("XDG_DATA_HOME", ".local/share");
  if (!own.empty()) folders.insert(folders.begin(), std::move(own));
  return folders;
}

std::vector<std::string> CurrentDesktops() {
  std::vector<std::string> names = SplitAtColons(EnvironmentValue("XDG_CURRENT_DESKTOP"));
  std::erase_if(names, [](const std::string& name) { return name.find('/') != name.npos; });
  for (std::string& name : names) {
    for (char& letter : name) {
      if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    }
  }
  return names;
}

std::string FindProgram(std::string_view name) {
  const char* folders = std::getenv("PATH");
  for (const std::string& folder : SplitAtColons(folders ? folders : kStandardProgramFolders)) {
    std::string path = JoinPath(folder, name);
    struct stat status;
    const bool isFile = ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
    if (folder.starts_with('/') && isFile && ::access(path.c_str(), X_OK) == 0) return path;
  }
  return {};
}

}  // namespace tarvo
