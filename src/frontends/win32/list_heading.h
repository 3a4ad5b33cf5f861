#pragma once

#include "frontends/win32/system.h"

namespace tarvo::win32 {

// Draws one heading of a list's columns: without margins save in the first column and never cut,
// because the other columns are as wide as their texts.
void DrawHeading(const NMCUSTOMDRAW& drawing);

}  // namespace tarvo::win32
