#include "tools/transfer_window.h"
#include "tools/upload.h"

int main(int argc, char** argv) {
  using namespace tarvo::tools;
  return RunTool("_UPLOAD", argc, argv, [](Tool& tool, const ToolOptions& options) {
    return ShowTransfer(tool, "Upload", options,
                        [&tool] { return std::make_unique<Upload>(tool); });
  });
}
