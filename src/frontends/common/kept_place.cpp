#include "frontends/common/kept_place.h"

namespace tarvo {
namespace {

struct Bound {
  int PixelBounds::*pixels;
  float Bounds::*twips;
  bool isSize;
};

constexpr Bound kBounds[] = {
    {&PixelBounds::left, &Bounds::Left, false},
    {&PixelBounds::top, &Bounds::Top, false},
    {&PixelBounds::width, &Bounds::Width, true},
    {&PixelBounds::height, &Bounds::Height, true},
};

}  // namespace

void KeptPlace::Applied(const PixelBounds& pixels) {
  known_ = assigned_ = place_;
  applied_ = exact_ = pixels;
}

void KeptPlace::Observed(const PixelBounds& pixels, const Scale& positions, const Scale& sizes) {
  for (const Bound& bound : kBounds) {
    const int now = pixels.*bound.pixels;
    if (now == applied_.*bound.pixels) continue;
    applied_.*bound.pixels = now;
    place_.*bound.twips = now == exact_.*bound.pixels
                              ? assigned_.*bound.twips
                              : (bound.isSize ? sizes : positions).ToTwips(now);
  }
  known_ = place_;
}

}  // namespace tarvo
