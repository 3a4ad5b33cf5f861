#include "frontends/common/icon_images.h"

#include <algorithm>
#include <cstdint>

namespace tarvo {
namespace {

constexpr std::size_t kHeader = 6;
constexpr std::size_t kEntry = 16;

std::size_t Number(std::string_view bytes, std::size_t at, std::size_t size) {
  std::uint32_t value = 0;
  for (std::size_t i = size; i-- > 0;)
    value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

std::vector<IconImage> Images(std::string_view file) {
  std::vector<IconImage> images;
  if (file.size() < kHeader) return images;
  const std::size_t count = std::min(Number(file, 4, 2), (file.size() - kHeader) / kEntry);
  images.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t at = kHeader + i * kEntry;
    const auto width = static_cast<int>(Number(file, at, 1));
    const std::size_t size = Number(file, at + 8, 4);
    const std::size_t offset = Number(file, at + 12, 4);
    if (offset > file.size() || size > file.size() - offset) continue;
    images.push_back({static_cast<int>(i), width == 0 ? 256 : width,
                      static_cast<int>(Number(file, at + 6, 2)), file.substr(offset, size)});
  }
  return images;
}

}  // namespace

std::vector<IconImage> ImagesBySuitability(std::string_view iconFile, int side) {
  std::vector<IconImage> images = Images(iconFile);
  std::stable_sort(images.begin(), images.end(), [side](const IconImage& a, const IconImage& b) {
    if (a.width == b.width) return a.bitsPerPixel > b.bitsPerPixel;
    const bool aSuffices = a.width >= side;
    const bool bSuffices = b.width >= side;
    if (aSuffices != bSuffices) return aSuffices;
    return aSuffices ? a.width < b.width : a.width > b.width;
  });
  return images;
}

}  // namespace tarvo
