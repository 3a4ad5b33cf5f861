#include "frontends/win32/tool_tips.h"

#include "frontends/win32/text.h"

namespace tarvo::win32 {
namespace {

constexpr LPARAM kWidest = 400;  // pixels; longer texts have several lines

TTTOOLINFOW ToolFor(HWND window, HWND control, wchar_t* text) {
  TTTOOLINFOW tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = window;
  tool.uId = reinterpret_cast<UINT_PTR>(control);
  tool.lpszText = text;
  return tool;
}

}  // namespace

void ShowPlainText(HWND toolTip) {
  const LONG_PTR style = GetWindowLongPtrW(toolTip, GWL_STYLE);
  SetWindowLongPtrW(toolTip, GWL_STYLE, style | TTS_NOPREFIX | TTS_ALWAYSTIP);
}

void ToolTips::Make() {
  toolTip_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP, CW_USEDEFAULT,
                             CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, window_, nullptr,
                             GetModuleHandleW(nullptr), nullptr);
  ShowPlainText(toolTip_);
  SendMessageW(toolTip_, TTM_SETMAXTIPWIDTH, 0, kWidest);
}

void ToolTips::Set(HWND control, std::string_view text) {
  std::wstring& known = texts_[control];
  std::wstring wanted = WideLines(text);
  if (known == wanted) return;
  const bool isNew = known.empty();
  known = std::move(wanted);
  if (!toolTip_) Make();
  TTTOOLINFOW tool = ToolFor(window_, control, known.data());
  const UINT message = known.empty() ? TTM_DELTOOLW : isNew ? TTM_ADDTOOLW : TTM_UPDATETIPTEXTW;
  SendMessageW(toolTip_, message, 0, reinterpret_cast<LPARAM>(&tool));
}

}  // namespace tarvo::win32
