#include "platform/windows/wide_text.h"
#include "tools/samples.h"
#include "tools/tool_windows.h"
#include "tools/win32/dialog.h"
#include "tools/win32/resource_ids.h"
#include "tools/window_texts.h"

namespace tarvo::tools {

namespace {

class SamplesDialog : public Dialog {
 public:
  SamplesDialog(Tool& tool, const ToolOptions& options) : tool_(tool), closes_(options.closes) {}

 protected:
  void Opened() override {
    SetText(TOOL_FILES_LABEL, texts::kSamples);
    SetText(IDCANCEL, texts::kClose);
    for (const std::string& name : SampleFiles(tool_)) {
      SendMessageW(Item(TOOL_FILES), LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(name).c_str()));
    }
    if (closes_) PressLater(IDCANCEL);
  }

  void Pressed(int button) override {
    if (button == IDCANCEL) Close();
  }

 private:
  Tool& tool_;
  bool closes_;
};

}  // namespace

int ShowSamples(Tool& tool, const ToolOptions& options, const std::string& title) {
  return ShownOrExplained(tool, options, [&] {
    SamplesDialog dialog(tool, options);
    dialog.Show(TOOL_SAMPLES, title);
    return 0;
  });
}

}  // namespace tarvo::tools
