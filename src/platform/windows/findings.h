#pragma once

#include <vector>

#include "platform/platform.h"

namespace tarvo {

// See Platform::Findings.
std::vector<SystemFinding> WindowsFindings();

}  // namespace tarvo
