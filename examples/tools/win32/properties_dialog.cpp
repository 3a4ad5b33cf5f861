#include "platform/windows/wide_text.h"
#include "tools/device_settings.h"
#include "tools/tool_windows.h"
#include "tools/win32/dialog.h"
// After it: uses the system's types.
#include <commctrl.h>

#include "tools/win32/resource_ids.h"
#include "tools/window_texts.h"

namespace tarvo::tools {

namespace {

class PropertiesDialog : public Dialog {
 public:
  PropertiesDialog(Tool& tool, const ToolOptions& options) : tool_(tool), closes_(options.closes) {}

 protected:
  void Opened() override {
    SetText(TOOL_PORT_LABEL, texts::kPort);
    SetText(TOOL_SITE_LABEL, texts::kSite);
    SetText(TOOL_INTERVAL_LABEL, texts::kInterval);
    SetText(IDOK, texts::kOk);
    SetText(IDCANCEL, texts::kCancel);
    for (const std::string_view port : kPorts) {
      SendMessageW(Item(TOOL_PORT), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(port).c_str()));
    }
    SendMessageW(Item(TOOL_SITE), EM_LIMITTEXT, kLongestSite, 0);
    SendMessageW(Item(TOOL_INTERVAL_ARROWS), UDM_SETRANGE32, kShortestInterval, kLongestInterval);
    shown_ = LoadDeviceSettings(tool_);
    SetText(TOOL_PORT, shown_.port);
    SetText(TOOL_SITE, shown_.site);
    SendMessageW(Item(TOOL_INTERVAL_ARROWS), UDM_SETPOS32, 0, shown_.interval);
    if (closes_) PressLater(IDOK);
  }

  void Pressed(int button) override {
    if (button == IDOK) SaveDeviceSettings(tool_, Chosen());
    if (button == IDOK || button == IDCANCEL) Close();
  }

 private:
  // A number that is missing or out of range leaves the interval as it was.
  DeviceSettings Chosen() const {
    BOOL failed = FALSE;
    const auto interval = static_cast<int>(SendMessageW(Item(TOOL_INTERVAL_ARROWS), UDM_GETPOS32, 0,
                                                        reinterpret_cast<LPARAM>(&failed)));
    return {TextOf(TOOL_PORT), TextOf(TOOL_SITE), failed ? shown_.interval : interval};
  }

  Tool& tool_;
  bool closes_;
  DeviceSettings shown_;
};

}  // namespace

int ShowProperties(Tool& tool, const ToolOptions& options) {
  return ShownOrExplained(tool, options, [&] {
    PropertiesDialog dialog(tool, options);
    dialog.Show(TOOL_PROPERTIES, texts::WindowTitle(tool, texts::kProperties));
    return 0;
  });
}

}  // namespace tarvo::tools
