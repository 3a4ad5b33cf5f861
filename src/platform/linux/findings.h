#pragma once

#include <vector>

#include "platform/platform.h"

namespace tarvo {

// What of the desktop and of wine is there; see Platform::Findings.
std::vector<SystemFinding> LinuxFindings();

}  // namespace tarvo
