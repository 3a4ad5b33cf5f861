#include <algorithm>
#include <string>

#include "base/paths.h"
#include "tools/tool_windows.h"

int main(int argc, char** argv) {
  using namespace tarvo;
  using namespace tarvo::tools;
  std::string title(FileNameOf(argv[0]));
  title.resize(std::min(title.find('.'), title.size()));
  return RunTool("_HANDHELD", argc, argv, [&](Tool& tool, const ToolOptions& options) {
    return ShowSamples(tool, options, title);
  });
}
