#include "frontends/win32/child_window.h"

namespace tarvo::win32 {

HWND MakeChild(HWND parent, const wchar_t* windowClass, DWORD style, int identifier,
               DWORD extendedStyle) {
  return CreateWindowExW(extendedStyle, windowClass, L"", WS_CHILD | style, 0, 0, 0, 0, parent,
                         FromNumber<HMENU>(static_cast<INT_PTR>(identifier)),
                         GetModuleHandleW(nullptr), nullptr);
}

void PlaceChild(HWND child, const PixelBounds& place) {
  RECT now = {};
  GetWindowRect(child, &now);
  MapWindowPoints(HWND_DESKTOP, GetParent(child), reinterpret_cast<POINT*>(&now), 2);
  const PixelBounds shown{now.left, now.top, now.right - now.left, now.bottom - now.top};
  if (shown == place) return;
  SetWindowPos(child, nullptr, place.left, place.top, place.width, place.height,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

// Asked of the control itself: IsWindowVisible is false while the window is not on the screen.
void ShowChild(HWND child, bool visible) {
  const bool now = (GetWindowLongPtrW(child, GWL_STYLE) & WS_VISIBLE) != 0;
  if (now != visible) ShowWindow(child, visible ? SW_SHOWNA : SW_HIDE);
}

void EnableChild(HWND child, bool enabled) {
  if ((IsWindowEnabled(child) != FALSE) != enabled) EnableWindow(child, enabled);
}

void SetText(HWND window, const std::wstring& text) {
  if (TextOf(window) != text) SetWindowTextW(window, text.c_str());
}

std::wstring TextOf(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

void SetFont(HWND window, HFONT font) {
  const auto wanted = reinterpret_cast<LRESULT>(font);
  if (SendMessageW(window, WM_GETFONT, 0, 0) == wanted) return;
  SendMessageW(window, WM_SETFONT, static_cast<WPARAM>(wanted), TRUE);
}

PixelBounds BoundsOf(HWND window) {
  RECT rect = {};
  GetWindowRect(window, &rect);
  return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

PixelBounds Desktop() {
  return {GetSystemMetrics(SM_XVIRTUALSCREEN), GetSystemMetrics(SM_YVIRTUALSCREEN),
          GetSystemMetrics(SM_CXVIRTUALSCREEN), GetSystemMetrics(SM_CYVIRTUALSCREEN)};
}

}  // namespace tarvo::win32
