#pragma once

#include <array>
#include <string>
#include <string_view>

#include "app/globals/globals.h"

namespace tarvo {

// The three tools of a driver, as the settings keys of their version records end.
inline constexpr std::array<std::string_view, 3> kToolSuffixes{"_DOWNLOAD", "_UPLOAD",
                                                               "_PROPERTIES"};

// The version text that a driver's tool recorded in the settings store, "-" when it recorded none.
// Only the tools write these. Error 5 when the driver's name makes a bad settings key ("~", or too
// long).
std::string ToolVersion(Globals& globals, std::string_view driver, std::string_view toolSuffix);

// Forgets what the system keeps of a removed driver beside the settings store: its section of the
// tools' program settings, then the settings under its own name. The first failure is raised and
// leaves the second undone. The version records in the settings store stay, so that a driver
// installed again shows the old versions until its tools record new ones.
void RemoveReg(Platform& platform, std::string_view drv);

}  // namespace tarvo
