#include "app/globals/data_folder.h"

#include "base/paths.h"
#include "platform/special_folder.h"

namespace tarvo {
namespace {

std::string DocumentsFolder(Platform& platform) {
  const std::string common = GetSpecialFolder(platform, kCommonDocuments);
  const bool isFound = common != WithSeparator("");
  return isFound ? common : GetSpecialFolder(platform, kPersonalDocuments);
}

}  // namespace

std::string GetDataDirectory(Globals& globals) {
  const std::string stored = globals.Setting(keys::kDirectoryRead);
  if (!stored.empty()) return stored;
  // Where they cannot be made, changing into them tells what is wrong.
  Platform& platform = globals.platform;
  const std::string company = MadeFolder(platform, DocumentsFolder(platform) + kCompanyName);
  return WithSeparator(MadeFolder(platform, JoinPath(company, "Halvex Tarvo")));
}

}  // namespace tarvo
