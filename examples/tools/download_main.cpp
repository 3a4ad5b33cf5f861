#include "tools/download.h"
#include "tools/transfer_window.h"

int main(int argc, char** argv) {
  using namespace tarvo::tools;
  return RunTool("_DOWNLOAD", argc, argv, [](Tool& tool, const ToolOptions& options) {
    return ShowTransfer(tool, "Download", options,
                        [&tool] { return std::make_unique<Download>(tool); });
  });
}
