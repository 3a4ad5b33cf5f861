#include "catalogue/version_records.h"

#include <utility>

#include "base/runtime_error.h"

namespace tarvo {
namespace {

std::string VersionKey(std::string_view driver, std::string_view toolSuffix) {
  return std::string(keys::kToolVersion.name).append(driver).append(toolSuffix);
}

}  // namespace

ToolVersions::ToolVersions(Globals& globals, const std::vector<std::string>& drivers) {
  RegistryReplacement& settings = globals.LocalRegistry();
  std::vector<std::string> names;
  names.reserve(drivers.size() * kToolSuffixes.size());
  for (const std::string& driver : drivers) {
    for (const std::string_view suffix : kToolSuffixes) {
      std::string key = VersionKey(driver, suffix);
      if (settings.IsKey(key)) names.push_back(std::move(key));
    }
  }
  std::vector<std::string> values = settings.GetSettings(names, keys::kToolVersion.defaultValue);
  for (std::size_t i = 0; i < names.size(); ++i) {
    versions_.try_emplace(std::move(names[i]), std::move(values[i]));
  }
}

std::string ToolVersions::Of(std::string_view driver, std::string_view toolSuffix) const {
  const auto version = versions_.find(VersionKey(driver, toolSuffix));
  if (version == versions_.end()) throw RuntimeError(kInvalidProcedureCall);
  return version->second;
}

void RemoveReg(Platform& platform, std::string_view drv) {
  platform.DeleteProgramSettings("tarvo.versions", drv);
  platform.DeleteProgramSettings(drv, {});
}

}  // namespace tarvo
