#pragma once

#include <array>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "app/globals/globals.h"

namespace tarvo {

// The three tools of a driver, as the settings keys of their version records end.
inline constexpr std::array<std::string_view, 3> kToolSuffixes{"_DOWNLOAD", "_UPLOAD",
                                                               "_PROPERTIES"};

// The version texts that the tools of drivers recorded in the settings store: as they were when the
// object was made, when the settings file is read once for all of them. Only the tools write these.
class ToolVersions {
 public:
  ToolVersions(Globals& globals, const std::vector<std::string>& drivers);

  // The text of a driver's tool, "-" when it recorded none. Error 5 when the driver's name makes a
  // bad settings key ("~", or too long).
  std::string Of(std::string_view driver, std::string_view toolSuffix) const;

 private:
  std::unordered_map<std::string, std::string> versions_;  // by settings key
};

// Forgets what the system keeps of a removed driver beside the settings store: its section of the
// tools' program settings, then the settings under its own name. The first failure is raised and
// leaves the second undone. The version records in the settings store stay, so that a driver
// installed again shows the old versions until its tools record new ones.
void RemoveReg(Platform& platform, std::string_view drv);

}  // namespace tarvo
