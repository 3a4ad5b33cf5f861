#include "frontends/common/twips.h"

#include <algorithm>
#include <cmath>

namespace tarvo {
namespace {

constexpr float kFarthest = 32767;  // the windowing systems' own limit
constexpr int kReachable = 48;      // pixels of a window that stay on the desktop

float Cut(float pixels) {
  return std::isnan(pixels) ? 0 : std::clamp(pixels, -kFarthest, kFarthest);
}

}  // namespace

float Scale::ToTwips(double pixels) const { return static_cast<float>(pixels * twipsPerPixel_); }

int Scale::ToPixels(float twips) const {
  return static_cast<int>(std::lround(Cut(twips / twipsPerPixel_)));
}

int Scale::ToPixelsUp(float twips) const {
  return static_cast<int>(std::ceil(Cut(twips / twipsPerPixel_)));
}

PixelBounds Scale::ToPixels(const Bounds& place) const {
  return {ToPixels(place.Left), ToPixels(place.Top), std::max(0, ToPixels(place.Width)),
          std::max(0, ToPixels(place.Height))};
}

PixelBounds Reachable(const PixelBounds& window, const PixelBounds& desktop) {
  const int width = std::clamp(window.width, 1, std::max(1, desktop.width));
  const int height = std::clamp(window.height, 1, std::max(1, desktop.height));
  const int right = desktop.left + desktop.width - 1;
  const int bottom = desktop.top + desktop.height - 1;
  const int leftmost = std::min(desktop.left, desktop.left - width + kReachable);
  const int rightmost = std::max(leftmost, right - kReachable);
  const int lowest = std::max(desktop.top, bottom - kReachable);
  return {std::clamp(window.left, leftmost, rightmost), std::clamp(window.top, desktop.top, lowest),
          width, height};
}

bool operator==(const Bounds& a, const Bounds& b) {
  return a.Left == b.Left && a.Top == b.Top && a.Width == b.Width && a.Height == b.Height;
}

}  // namespace tarvo
