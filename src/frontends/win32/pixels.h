#pragma once

#include <cstdint>
#include <vector>

namespace tarvo::win32 {

// A picture as its pixels, row by row from the top: alpha in the highest byte, then red, green and
// blue, not multiplied by alpha.
struct Pixels {
  Pixels() = default;
  Pixels(int newWidth, int newHeight)
      : width(newWidth),
        height(newHeight),
        values(static_cast<std::size_t>(newWidth) * static_cast<std::size_t>(newHeight)) {}

  bool IsEmpty() const { return values.empty(); }
  std::uint32_t& At(int x, int y) { return values[Index(x, y)]; }
  std::uint32_t At(int x, int y) const { return values[Index(x, y)]; }

  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> values;

 private:
  std::size_t Index(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
           static_cast<std::size_t>(x);
  }
};

// The picture in another size. Each new pixel is the mean of what it covers.
Pixels Scaled(const Pixels& picture, int width, int height);

// The picture in the middle of a transparent one of that size: made smaller when it does not fit,
// larger when there is room but at most `largest` times.
Pixels Fitted(const Pixels& picture, int width, int height, double largest);

// As a disabled button shows it: in shades of grey, half transparent.
Pixels Greyed(Pixels picture);

}  // namespace tarvo::win32
