#include "frontends/qt/twips.h"

#include <algorithm>
#include <cmath>

namespace tarvo::qt {
namespace {

constexpr float kFarthest = 32767;  // the windowing systems' own limit
constexpr int kReachable = 48;      // pixels of a window that stay on the desktop

}  // namespace

float ToTwips(double pixels) { return static_cast<float>(pixels * kTwipsPerPixel); }

int ToPixels(float twips) {
  if (std::isnan(twips)) return 0;
  return static_cast<int>(std::lround(std::clamp(twips / kTwipsPerPixel, -kFarthest, kFarthest)));
}

QRect ToPixels(const Bounds& place) {
  return {ToPixels(place.Left), ToPixels(place.Top), std::max(0, ToPixels(place.Width)),
          std::max(0, ToPixels(place.Height))};
}

QRect OuterPixels(const Bounds& place, const QRect& desktop) {
  const int width = std::clamp(ToPixels(place.Width), 1, std::max(1, desktop.width()));
  const int height = std::clamp(ToPixels(place.Height), 1, std::max(1, desktop.height()));
  const int leftmost = std::min(desktop.left(), desktop.left() - width + kReachable);
  const int rightmost = std::max(leftmost, desktop.right() - kReachable);
  const int lowest = std::max(desktop.top(), desktop.bottom() - kReachable);
  return {std::clamp(ToPixels(place.Left), leftmost, rightmost),
          std::clamp(ToPixels(place.Top), desktop.top(), lowest), width, height};
}

bool operator==(const Bounds& a, const Bounds& b) {
  return a.Left == b.Left && a.Top == b.Top && a.Width == b.Width && a.Height == b.Height;
}

}  // namespace tarvo::qt
