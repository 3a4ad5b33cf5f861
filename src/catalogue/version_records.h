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

}  // namespace tarvo
