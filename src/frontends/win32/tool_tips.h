#pragma once

#include <map>
#include <string>
#include <string_view>

#include "frontends/win32/handles.h"

namespace tarvo::win32 {

// Makes a tool tip show its text as it stands, "&" included.
void ShowPlainText(HWND toolTip);

// The tool tips of a window's controls.
class ToolTips {
 public:
  explicit ToolTips(HWND window) : window_(window) {}

  // What a control tells; "" for nothing.
  void Set(HWND control, std::string_view text);

 private:
  void Make();

  HWND window_;
  HWND toolTip_ = nullptr;  // goes with the window that owns it
  std::map<HWND, std::wstring> texts_;
};

}  // namespace tarvo::win32
