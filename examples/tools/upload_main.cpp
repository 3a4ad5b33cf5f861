#include "tools/tool_windows.h"
#include "tools/upload.h"
#include "tools/window_texts.h"

int main(int argc, char** argv) {
  using namespace tarvo::tools;
  return RunTool("_UPLOAD", argc, argv, [](Tool& tool, const ToolOptions& options) {
    return ShowTransfer(tool, texts::kUpload, options,
                        [&tool] { return std::make_unique<Upload>(tool); });
  });
}
