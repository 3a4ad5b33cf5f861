#include "app/globals/data_folder.h"

#include "base/paths.h"
#include "base/runtime_error.h"
#include "platform/names.h"
#include "platform/special_folder.h"

namespace tarvo {
namespace {

std::string DocumentsFolder(Platform& platform) {
  const std::string common = GetSpecialFolder(platform, kCommonDocuments);
  if (!common.empty() && common != std::string(1, kSeparator)) return common;
  return GetSpecialFolder(platform, kPersonalDocuments);
}

// An existing folder, in whatever letter case, is used as it is.
std::string MadeFolder(Platform& platform, const std::string& parent, const std::string& name) {
  const std::string path = ResolveName(platform, parent + name);
  try {
    platform.MakeFolder(path);
  } catch (const RuntimeError&) {
    // It exists already, or changing into it will tell what is wrong.
  }
  return WithSeparator(path);
}

}  // namespace

std::string GetDataDirectory(Globals& globals) {
  const std::string stored = globals.Setting(keys::kDirectoryRead);
  if (!stored.empty()) return stored;
  const std::string company =
      MadeFolder(globals.platform, DocumentsFolder(globals.platform), kCompanyName);
  return MadeFolder(globals.platform, company, "Halvex Tarvo");
}

}  // namespace tarvo
