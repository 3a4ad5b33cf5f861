#include "frontends/win32/status_pane.h"

#include <algorithm>

#include "frontends/win32/child_window.h"
#include "frontends/win32/fonts.h"
#include "frontends/win32/text.h"

namespace tarvo::win32 {
namespace {

constexpr int kPanelMargins = 20;  // left and right of a text together, at the standard resolution
constexpr int kLongestTime = 80;   // characters of a date or a time

std::wstring PanelText(const StatusPanel& panel) {
  wchar_t text[kLongestTime] = {};
  switch (panel.Style) {
    case PanelStyle::kDate:
      GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, nullptr, nullptr, text,
                      kLongestTime, nullptr);
      return text;
    case PanelStyle::kTime:
      GetTimeFormatEx(LOCALE_NAME_USER_DEFAULT, TIME_NOSECONDS, nullptr, nullptr, text,
                      kLongestTime);
      return text;
    case PanelStyle::kText:
      break;
  }
  // A tab would set the text in the middle or on the right.
  return WideCaption(panel.Text);
}

}  // namespace

StatusPane::StatusPane(const StatusBar& statusBar, HWND parent, int identifier)
    : statusBar_(statusBar),
      window_(MakeChild(
          parent, STATUSCLASSNAMEW,
          WS_VISIBLE | WS_CLIPSIBLINGS | SBARS_SIZEGRIP | CCS_NORESIZE | CCS_NOPARENTALIGN,
          identifier)) {}

// What the control itself finds right for its font.
int StatusPane::Height() const {
  int borders[3] = {};
  SendMessageW(window_, SB_GETBORDERS, 0, reinterpret_cast<LPARAM>(borders));
  const int dots = static_cast<int>(GetDpiForWindow(window_));
  return LineHeight(font_) + 2 * borders[1] + MulDiv(8, dots, USER_DEFAULT_SCREEN_DPI);
}

void StatusPane::SetTextFont(HFONT font) {
  font_ = font;
  SetFont(window_, font);
  width_ = -1;
  PlacePanels();
}

void StatusPane::Sync() {
  ShowChild(window_, statusBar_.Visible);
  std::vector<std::wstring> texts;
  for (const StatusPanel& panel : statusBar_.Panels) texts.push_back(PanelText(panel));
  if (texts == texts_) return;
  const bool hasOtherPanels = texts.size() != texts_.size();
  std::swap(texts, texts_);
  for (std::size_t i = 0; i < texts_.size(); ++i) {
    if (hasOtherPanels || texts_[i] != texts[i]) width_ = -1;
  }
  PlacePanels();
  for (std::size_t i = 0; i < texts_.size(); ++i) {
    SendMessageW(window_, SB_SETTEXTW, i, reinterpret_cast<LPARAM>(texts_[i].c_str()));
  }
}

void StatusPane::PlacePanels() {
  RECT inner = {};
  GetClientRect(window_, &inner);
  if (texts_.empty() || inner.right == width_) return;
  width_ = inner.right;
  const int dots = static_cast<int>(GetDpiForWindow(window_));
  const int margins = MulDiv(kPanelMargins, dots, USER_DEFAULT_SCREEN_DPI);
  std::vector<int> edges(texts_.size());
  int edge = width_ - GetSystemMetricsForDpi(SM_CXVSCROLL, static_cast<UINT>(dots));  // the grip
  for (std::size_t i = edges.size(); i-- > 0;) {
    edges[i] = std::max(edge, 0);
    edge -= TextWidth(font_, texts_[i]) + margins;
  }
  edges.back() = -1;
  SendMessageW(window_, SB_SETPARTS, edges.size(), reinterpret_cast<LPARAM>(edges.data()));
}

}  // namespace tarvo::win32
