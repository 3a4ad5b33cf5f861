#include "frontends/win32/list_heading.h"

#include <string>

#include "frontends/win32/handles.h"

namespace tarvo::win32 {
namespace {

constexpr int kHeadingPart = 1;  // of the theme's class "HEADER", and its normal state
constexpr int kNormalState = 1;
constexpr int kLongestHeading = 260;
constexpr int kFirstMargin = 6;  // pixels at the standard resolution

void DrawBackground(const NMCUSTOMDRAW& drawing) {
  RECT place = drawing.rc;
  const ThemeHandle theme(OpenThemeData(drawing.hdr.hwndFrom, L"HEADER"));
  if (theme) {
    DrawThemeBackground(theme.Get(), drawing.hdc, kHeadingPart, kNormalState, &place, nullptr);
    return;
  }
  FillRect(drawing.hdc, &place, GetSysColorBrush(COLOR_BTNFACE));
  DrawEdge(drawing.hdc, &place, BDR_RAISEDINNER, BF_RIGHT | BF_BOTTOM);
}

std::wstring HeadingText(const NMCUSTOMDRAW& drawing) {
  wchar_t text[kLongestHeading] = {};
  HDITEMW item{};
  item.mask = HDI_TEXT;
  item.pszText = text;
  item.cchTextMax = kLongestHeading;
  SendMessageW(drawing.hdr.hwndFrom, HDM_GETITEMW, drawing.dwItemSpec,
               reinterpret_cast<LPARAM>(&item));
  return item.pszText;
}

}  // namespace

void DrawHeading(const NMCUSTOMDRAW& drawing) {
  DrawBackground(drawing);
  RECT place = drawing.rc;
  if (drawing.dwItemSpec == 0) {
    const auto dots = static_cast<int>(GetDpiForWindow(drawing.hdr.hwndFrom));
    place.left += MulDiv(kFirstMargin, dots, USER_DEFAULT_SCREEN_DPI);
  }
  const std::wstring text = HeadingText(drawing);
  SetBkMode(drawing.hdc, TRANSPARENT);
  SetTextColor(drawing.hdc, GetSysColor(COLOR_BTNTEXT));
  DrawTextW(drawing.hdc, text.c_str(), static_cast<int>(text.size()), &place,
            DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_NOCLIP);
}

}  // namespace tarvo::win32
