#include "platform/special_folder.h"

#include "base/paths.h"
#include "base/runtime_error.h"
#include "platform/names.h"

namespace tarvo {

std::string GetSpecialFolder(Platform& platform, int identifier) {
  return WithSeparator(platform.SpecialFolder(identifier).value_or(""));
}

std::string MadeFolder(Platform& platform, std::string_view path) {
  const std::string parent = ResolveName(platform, FolderOf(path));
  const auto make = [&platform](const std::string& folder) {
    try {
      platform.MakeFolder(folder);
    } catch (const RuntimeError&) {
      // It exists already, or it cannot be made.
    }
  };
  if (!parent.empty() && !platform.Attributes(parent)) make(parent);
  const std::string folder = ResolveName(platform, path);
  if (!platform.Attributes(folder)) make(folder);
  return folder;
}

}  // namespace tarvo
