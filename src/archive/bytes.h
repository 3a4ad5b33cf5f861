#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tarvo {

// The little-endian number that stands at a place in some bytes, which must reach that far.
template <typename Number>
Number NumberAt(std::string_view bytes, std::size_t at) {
  Number value = 0;
  for (std::size_t i = sizeof(Number); i-- > 0;) {
    value = static_cast<Number>(static_cast<std::uint64_t>(value) << 8 |
                                static_cast<unsigned char>(bytes[at + i]));
  }
  return value;
}

inline std::uint16_t Number16(std::string_view bytes, std::size_t at) {
  return NumberAt<std::uint16_t>(bytes, at);
}
inline std::uint32_t Number32(std::string_view bytes, std::size_t at) {
  return NumberAt<std::uint32_t>(bytes, at);
}
inline std::uint64_t Number64(std::string_view bytes, std::size_t at) {
  return NumberAt<std::uint64_t>(bytes, at);
}

}  // namespace tarvo
