#include "forms/png_image.h"

#include <array>

namespace tarvo {
namespace {

constexpr std::string_view kSignature = "\x89PNG\r\n\x1a\n";
constexpr std::size_t kAround = 12;  // a chunk's size, type and checksum, in bytes

std::uint32_t Number(std::string_view bytes, std::size_t at) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  }
  return value;
}

using Remainders = std::array<std::array<std::uint32_t, 256>, 4>;

// What each byte adds to the checksum when that many bytes stand behind it.
constexpr Remainders MakeRemainders() {
  Remainders remainders{};
  for (std::uint32_t byte = 0; byte < 256; ++byte) {
    std::uint32_t value = byte;
    for (int bit = 0; bit < 8; ++bit) value = value >> 1 ^ ((value & 1) != 0 ? 0xEDB88320U : 0U);
    remainders[0][byte] = value;
  }
  for (std::size_t behind = 1; behind < remainders.size(); ++behind) {
    for (std::size_t byte = 0; byte < 256; ++byte) {
      const std::uint32_t value = remainders[behind - 1][byte];
      remainders[behind][byte] = value >> 8 ^ remainders[0][value & 0xFF];
    }
  }
  return remainders;
}

// Four bytes at a time: the icons of every driver come by here when the list is built.
std::uint32_t Checksum(std::string_view bytes) {
  static constexpr Remainders kRemainders = MakeRemainders();
  const auto byteAt = [&](std::size_t at) {
    return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at]));
  };
  std::uint32_t sum = 0xFFFFFFFFU;
  std::size_t at = 0;
  for (; at + 4 <= bytes.size(); at += 4) {
    sum ^= byteAt(at) | byteAt(at + 1) << 8 | byteAt(at + 2) << 16 | byteAt(at + 3) << 24;
    sum = kRemainders[3][sum & 0xFF] ^ kRemainders[2][sum >> 8 & 0xFF] ^
          kRemainders[1][sum >> 16 & 0xFF] ^ kRemainders[0][sum >> 24];
  }
  for (; at < bytes.size(); ++at) sum = sum >> 8 ^ kRemainders[0][(sum ^ byteAt(at)) & 0xFF];
  return ~sum;
}

struct Chunk {
  std::string_view type;
  std::string_view content;
};

// Takes the chunk at the front away; nothing when it is cut off or damaged.
std::optional<Chunk> TakeChunk(std::string_view& bytes) {
  if (bytes.size() < kAround) return std::nullopt;
  const std::size_t size = Number(bytes, 0);
  if (size > bytes.size() - kAround) return std::nullopt;
  const std::string_view summed = bytes.substr(4, 4 + size);
  if (Checksum(summed) != Number(bytes, 8 + size)) return std::nullopt;
  bytes.remove_prefix(kAround + size);
  return Chunk{summed.substr(0, 4), summed.substr(4)};
}

// What the header chunk says: sides, bits of a sample, kind of colours, methods.
struct Header {
  static constexpr std::size_t kBytes = 13;
  static constexpr int kPalette = 3;

  explicit Header(std::string_view bytes)
      : sides{Number(bytes, 0), Number(bytes, 4)}, bits(bytes[8]), colours(bytes[9]) {
    isKnown = bytes[10] == 0 && bytes[11] == 0 && (bytes[12] == 0 || bytes[12] == 1) && HasDepth();
  }

  bool HasDepth() const {
    const bool isWhole = bits == 8 || bits == 16;
    const bool isPart = bits == 1 || bits == 2 || bits == 4;
    switch (colours) {
      case 0:
        return isWhole || isPart;
      case kPalette:
        return bits == 8 || isPart;
      case 2:
      case 4:
      case 6:
        return isWhole;
      default:
        return false;
    }
  }

  PngSides sides;
  int bits;
  int colours;
  bool isKnown = false;
};

}  // namespace

std::optional<PngSides> SidesOfPng(std::string_view bytes) {
  if (!bytes.starts_with(kSignature)) return std::nullopt;
  bytes.remove_prefix(kSignature.size());
  const auto first = TakeChunk(bytes);
  if (!first || first->type != "IHDR" || first->content.size() != Header::kBytes) {
    return std::nullopt;
  }
  const Header header(first->content);
  if (!header.isKnown) return std::nullopt;
  bool needsPalette = header.colours == Header::kPalette;
  bool hasData = false;
  while (const auto chunk = TakeChunk(bytes)) {
    if (chunk->type == "PLTE") needsPalette = false;
    if (chunk->type == "IDAT") {
      if (needsPalette) return std::nullopt;
      hasData = true;
    }
    if (chunk->type == "IEND") return hasData ? std::optional(header.sides) : std::nullopt;
  }
  return std::nullopt;
}

}  // namespace tarvo
