#include "platform/linux/findings.h"

#include "base/runtime_error.h"

namespace tarvo {

std::vector<SystemFinding> LinuxFindings() { return {}; }

}  // namespace tarvo
