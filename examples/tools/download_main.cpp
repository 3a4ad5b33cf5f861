#include "tools/download.h"
#include "tools/tool_windows.h"
#include "tools/window_texts.h"

int main(int argc, char** argv) {
  using namespace tarvo::tools;
  return RunTool("_DOWNLOAD", argc, argv, [](Tool& tool, const ToolOptions& options) {
    return ShowTransfer(tool, texts::kDownload, options,
                        [&tool] { return std::make_unique<Download>(tool); });
  });
}
