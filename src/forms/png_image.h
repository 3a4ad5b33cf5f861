#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tarvo {

struct PngSides {
  std::uint32_t width;
  std::uint32_t height;
};

// The sides of a PNG image that stands at the beginning of the bytes (PNG specification, ISO/IEC
// 15948); nothing when it is none or damaged: every chunk up to the end chunk must lie inside the
// bytes and have a true checksum, the header chunk must describe an image, and there must be
// image data, with a palette before it where the header asks for one. The image data itself is not
// inflated.
std::optional<PngSides> SidesOfPng(std::string_view bytes);

}  // namespace tarvo
