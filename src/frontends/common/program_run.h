#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/platform.h"

namespace tarvo {

// The words of the command line (see ProgramArguments) joined by one blank each.
std::string JoinArguments(const std::vector<std::string>& arguments);

// One run from start to end that needs no window, no display and no toolkit: the report of the
// tools' versions. Gives the message of the error that ended it, "" without one; nothing, having
// done nothing, for arguments that ask for windows.
std::optional<std::string> RunWithoutWindows(Platform& platform, const std::string& arguments);

}  // namespace tarvo
