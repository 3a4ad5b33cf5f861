#pragma once

#include <string>
#include <vector>

#include "tools/tool.h"

namespace tarvo::tools {

// The names of the "*.hvd" files that lie beside the program.
std::vector<std::string> SampleFiles(Tool& tool);

}  // namespace tarvo::tools
