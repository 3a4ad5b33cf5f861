#include "frontends/qt/twips.h"

namespace tarvo::qt {

QRect ToPixels(const Bounds& place) { return ToRect(kScale.ToPixels(place)); }

QRect OuterPixels(const Bounds& place, const QRect& desktop) {
  return ToRect(Reachable(kScale.ToPixels(place), ToPixelBounds(desktop)));
}

}  // namespace tarvo::qt
