#include "catalogue/version_records.h"

namespace tarvo {

std::string ToolVersion(Globals& globals, std::string_view driver, std::string_view toolSuffix) {
  const std::string key = std::string(keys::kToolVersion.name).append(driver).append(toolSuffix);
  return globals.LocalRegistry().GetSetting(key, keys::kToolVersion.defaultValue);
}

void RemoveReg(Platform& platform, std::string_view drv) {
  platform.DeleteProgramSettings("tarvo.versions", drv);
  platform.DeleteProgramSettings(drv, {});
}

}  // namespace tarvo
