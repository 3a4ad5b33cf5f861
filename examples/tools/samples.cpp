#include "tools/samples.h"

#include <utility>

#include "platform/names.h"

namespace tarvo::tools {

std::vector<std::string> SampleFiles(Tool& tool) {
  std::vector<std::string> names;
  for (FolderEntry& entry : ListFolder(tool.System(), tool.DriverFolder(), "*.hvd", kNormal)) {
    names.push_back(std::move(entry.name));
  }
  return names;
}

}  // namespace tarvo::tools
