#pragma once

#include <optional>

#include "forms/control.h"
#include "frontends/common/twips.h"

namespace tarvo {

// Keeps a window's Place, in twips, in line with its bounds on the screen.
//
// What the program assigns is brought to the screen as whole pixels and stays in Place as it was
// assigned, until the user moves or sizes the window: then the changed values, and only they, are
// replaced by what is on the screen. A bound that comes back to the pixels of the assigned value
// gets exactly that value again, so that maximising and restoring a window changes nothing.
class KeptPlace {
 public:
  explicit KeptPlace(Bounds& place) : place_(place) {}

  // Whether Place has been assigned since it was last applied or taken from the screen.
  bool IsAssigned() const { return !known_ || !(*known_ == place_); }

  // Place has been brought to the screen as these pixels.
  void Applied(const PixelBounds& pixels);

  // The screen shows other pixels for the assigned place, by no doing of the user.
  void Settled(const PixelBounds& pixels) { applied_ = exact_ = pixels; }

  // What the screen is expected to show.
  const PixelBounds& Expected() const { return applied_; }

  // The screen shows this by the user's doing. Positions and sizes have a scale each, because a
  // window's size follows the screen that it is on.
  void Observed(const PixelBounds& pixels, const Scale& positions, const Scale& sizes);

 private:
  Bounds& place_;
  std::optional<Bounds> known_;  // Place as last applied or taken over
  Bounds assigned_;              // Place as last assigned by the program ...
  PixelBounds exact_;            // ... and what it is in pixels
  PixelBounds applied_;
};

}  // namespace tarvo
