#pragma once

#include <string>

#include "frontends/common/twips.h"
#include "frontends/win32/system.h"

namespace tarvo::win32 {

// Makes a control on a window; `style` beside being a child. Its identifier is what it tells the
// window with its notifications.
HWND MakeChild(HWND parent, const wchar_t* windowClass, DWORD style, int identifier,
               DWORD extendedStyle = 0);

// Each of these does nothing when the control is like that already, so that nothing is drawn twice.
void PlaceChild(HWND child, const PixelBounds& place);
void ShowChild(HWND child, bool visible);
void EnableChild(HWND child, bool enabled);
void SetText(HWND window, const std::wstring& text);
void SetFont(HWND window, HFONT font);

// The text that a window shows or is read by.
std::wstring TextOf(HWND window);

// The outer bounds of a window on the screen.
PixelBounds BoundsOf(HWND window);

// All screens together.
PixelBounds Desktop();

}  // namespace tarvo::win32
