#pragma once

#include <string_view>

#include "forms/control.h"
#include "frontends/win32/handles.h"

namespace tarvo::win32 {

// A control's font on a screen of that many dots per inch. The standard one of all controls is the
// user's own for messages.
FontHandle MakeFont(const Font& font, unsigned dotsPerInch);

// Sizes in pixels: of a text on one line, and of a line.
int TextWidth(HFONT font, std::wstring_view text);
int LineHeight(HFONT font);

}  // namespace tarvo::win32
