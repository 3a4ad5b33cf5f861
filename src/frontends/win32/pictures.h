#pragma once

#include <string_view>

#include "forms/picture.h"
#include "frontends/win32/handles.h"
#include "frontends/win32/pixels.h"

namespace tarvo::win32 {

// The pixels of that image of a picture which suits a square of `side` pixels best: one that is
// large enough where there is one. Nothing for what cannot be decoded, and for no picture.
Pixels Decode(const Picture* picture, int side);

// A picture as it is drawn: in the middle of a transparent square of `side` pixels, not enlarged
// beyond the scale of a screen of that many dots per inch. No picture draws as nothing.
Pixels Drawn(const Picture* picture, int side, unsigned dotsPerInch);

IconHandle MakeIcon(const Pixels& pixels);

// The program's icon, from its resources, at a size of the system's (such as SM_CXICON).
IconHandle ProgramIcon(int sizeMetric, unsigned dotsPerInch);

}  // namespace tarvo::win32
