#include "frontends/win32/pixels.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tarvo::win32 {
namespace {

// The pixels of one row or column that a new pixel covers, and how much of each.
struct Share {
  int from;
  std::vector<double> weights;  // their sum is 1
};

std::vector<Share> Shares(int from, int to) {
  std::vector<Share> shares;
  shares.reserve(static_cast<std::size_t>(to));
  const double step = static_cast<double>(from) / to;
  for (int i = 0; i < to; ++i) {
    const double begin = i * step;
    const double end = std::min(begin + step, static_cast<double>(from));
    Share share{static_cast<int>(begin), {}};
    for (int j = share.from; j < end && j < from; ++j) {
      const double covered = std::min(end, j + 1.0) - std::max(begin, static_cast<double>(j));
      share.weights.push_back(covered / (end - begin));
    }
    shares.push_back(std::move(share));
  }
  return shares;
}

// Sums of alpha and of the colours multiplied by alpha.
class Mean {
 public:
  void Add(std::uint32_t value, double weight) {
    const double alpha = (value >> 24) * weight;
    alpha_ += alpha;
    for (std::size_t i = 0; i < colours_.size(); ++i)
      colours_[i] += (value >> (8 * i) & 0xFF) * alpha;
  }

  std::uint32_t Value() const {
    if (alpha_ <= 0) return 0;
    std::uint32_t value = Byte(alpha_) << 24;
    for (std::size_t i = 0; i < colours_.size(); ++i)
      value |= Byte(colours_[i] / alpha_) << (8 * i);
    return value;
  }

 private:
  static std::uint32_t Byte(double value) {
    return static_cast<std::uint32_t>(std::clamp(std::lround(value), 0L, 255L));
  }

  double alpha_ = 0;
  std::array<double, 3> colours_{};
};

}  // namespace

Pixels Scaled(const Pixels& picture, int width, int height) {
  if (picture.width == width && picture.height == height) return picture;
  Pixels scaled(width, height);
  if (picture.IsEmpty()) return scaled;
  const std::vector<Share> columns = Shares(picture.width, width);
  const std::vector<Share> rows = Shares(picture.height, height);
  for (int y = 0; y < height; ++y) {
    const Share& row = rows[static_cast<std::size_t>(y)];
    for (int x = 0; x < width; ++x) {
      const Share& column = columns[static_cast<std::size_t>(x)];
      Mean mean;
      for (std::size_t i = 0; i < row.weights.size(); ++i) {
        for (std::size_t j = 0; j < column.weights.size(); ++j) {
          mean.Add(picture.At(column.from + static_cast<int>(j), row.from + static_cast<int>(i)),
                   row.weights[i] * column.weights[j]);
        }
      }
      scaled.At(x, y) = mean.Value();
    }
  }
  return scaled;
}

Pixels Fitted(const Pixels& picture, int width, int height, double largest) {
  Pixels fitted(width, height);
  if (picture.IsEmpty() || fitted.IsEmpty()) return fitted;
  const double room = std::min(static_cast<double>(width) / picture.width,
                               static_cast<double>(height) / picture.height);
  const double factor = std::min(room, largest);
  const Pixels scaled =
      Scaled(picture, std::clamp(static_cast<int>(std::lround(picture.width * factor)), 1, width),
             std::clamp(static_cast<int>(std::lround(picture.height * factor)), 1, height));
  const int left = (width - scaled.width) / 2;
  const int top = (height - scaled.height) / 2;
  for (int y = 0; y < scaled.height; ++y) {
    for (int x = 0; x < scaled.width; ++x) fitted.At(left + x, top + y) = scaled.At(x, y);
  }
  return fitted;
}

Pixels Greyed(Pixels picture) {
  for (std::uint32_t& value : picture.values) {
    const std::uint32_t light =
        ((value >> 16 & 0xFF) * 77 + (value >> 8 & 0xFF) * 150 + (value & 0xFF) * 29) >> 8;
    const std::uint32_t alpha = (value >> 24) / 2;
    value = alpha << 24 | light << 16 | light << 8 | light;
  }
  return picture;
}

}  // namespace tarvo::win32
