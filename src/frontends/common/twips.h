#pragma once

#include "forms/control.h"

namespace tarvo {

// Bounds on the screen.
struct PixelBounds {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;

  bool operator==(const PixelBounds&) const = default;
};

// Windows are measured in twips, of which 1440 are an inch, the screen in pixels. Every conversion
// between the two is made here.
class Scale {
 public:
  explicit Scale(unsigned dotsPerInch)
      : twipsPerPixel_(1440.0F / static_cast<float>(dotsPerInch)) {}

  float ToTwips(double pixels) const;

  // The nearest whole number of pixels. Values that no screen can show are cut, and what is no
  // number gives 0.
  int ToPixels(float twips) const;

  // The least number of pixels that holds the twips, so that no measured text loses its end.
  int ToPixelsUp(float twips) const;

  // A control's bounds; a negative size counts as 0.
  PixelBounds ToPixels(const Bounds& place) const;

 private:
  float twipsPerPixel_;
};

// A window's outer bounds, brought to a size that the desktop can show and to a position at which
// a part of the window's upper edge can be reached.
PixelBounds Reachable(const PixelBounds& window, const PixelBounds& desktop);

bool operator==(const Bounds& a, const Bounds& b);

}  // namespace tarvo
