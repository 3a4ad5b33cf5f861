#pragma once

#include <QRect>

#include "frontends/common/twips.h"

namespace tarvo::qt {

// The toolkit measures the screen in logical pixels of 15 twips each.
inline const Scale kScale(96);

inline float ToTwips(double pixels) { return kScale.ToTwips(pixels); }
inline int ToPixels(float twips) { return kScale.ToPixels(twips); }

// A control's bounds.
QRect ToPixels(const Bounds& place);

// A window's outer bounds, brought to where the desktop can show them.
QRect OuterPixels(const Bounds& place, const QRect& desktop);

inline QRect ToRect(const PixelBounds& pixels) {
  return {pixels.left, pixels.top, pixels.width, pixels.height};
}
inline PixelBounds ToPixelBounds(const QRect& rect) {
  return {rect.left(), rect.top(), rect.width(), rect.height()};
}

}  // namespace tarvo::qt
