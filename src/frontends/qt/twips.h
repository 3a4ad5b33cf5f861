#pragma once

#include <QRect>

#include "forms/control.h"

namespace tarvo::qt {

// Windows are measured in twips, the screen in logical pixels of 15 twips each. Every conversion
// between the two is made here.
inline constexpr float kTwipsPerPixel = 15;

float ToTwips(double pixels);

// The nearest whole number of pixels. Values that no screen can show are cut, and what is no number
// gives 0.
int ToPixels(float twips);

// A control's bounds; a negative size counts as 0.
QRect ToPixels(const Bounds& place);

// A window's outer bounds, brought to a size that the desktop can show and to a position at which
// a part of the window's upper edge can be reached.
QRect OuterPixels(const Bounds& place, const QRect& desktop);

bool operator==(const Bounds& a, const Bounds& b);

}  // namespace tarvo::qt
