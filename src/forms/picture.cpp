#include "forms/picture.h"

#include <cstdint>

#include "forms/png_image.h"

namespace tarvo {
namespace {

// Little-endian numbers of a file; reading beyond its end gives 0, callers test the size first.
std::uint32_t Number(std::string_view bytes, std::size_t at, int size) {
  std::uint32_t value = 0;
  for (int i = size - 1; i >= 0; --i) {
    const std::size_t place = at + static_cast<std::size_t>(i);
    value = value << 8 | (place < bytes.size() ? static_cast<unsigned char>(bytes[place]) : 0U);
  }
  return value;
}

bool IsSide(std::int64_t side) {
  return side >= 1 && side <= static_cast<std::int64_t>(kMaxPictureSide);
}

// The header of a bitmap: BITMAPINFOHEADER (40 bytes) or one of its longer successors.
struct BitmapHeader {
  std::uint32_t size;
  std::int64_t width;
  std::int64_t height;  // of the picture; negative in a file that runs from top to bottom
  std::uint32_t bitsPerPixel;
  std::uint32_t compression;
  std::uint32_t paletteEntries;

  std::uint64_t PaletteBytes() const {
    if (bitsPerPixel > 8) return 0;
    return 4ULL * (paletteEntries != 0 ? paletteEntries : 1U << bitsPerPixel);
  }
  std::uint64_t PixelBytes(std::int64_t rows) const {
    const auto rowBits = static_cast<std::uint64_t>(width) * bitsPerPixel;
    return (rowBits + 31) / 32 * 4 * static_cast<std::uint64_t>(rows);
  }
};

constexpr std::uint32_t kUncompressed = 0;
constexpr std::uint32_t kBitMasks = 3;

bool ReadBitmapHeader(std::string_view bytes, BitmapHeader& header) {
  if (bytes.size() < 40) return false;
  header.size = Number(bytes, 0, 4);
  header.width = static_cast<std::int32_t>(Number(bytes, 4, 4));
  header.height = static_cast<std::int32_t>(Number(bytes, 8, 4));
  header.bitsPerPixel = Number(bytes, 14, 2);
  header.compression = Number(bytes, 16, 4);
  header.paletteEntries = Number(bytes, 32, 4);
  const std::uint32_t bits = header.bitsPerPixel;
  const bool knownSize = header.size == 40 || header.size == 52 || header.size == 56 ||
                         header.size == 108 || header.size == 124;
  const bool knownBits =
      bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
  const bool masks = header.compression == kBitMasks && (bits == 16 || bits == 32);
  return knownSize && knownBits && (header.compression == kUncompressed || masks) &&
         header.paletteEntries <= 256 && bytes.size() >= header.size;
}

bool IsBitmapFile(std::string_view bytes) {
  constexpr std::size_t kFileHeader = 14;
  BitmapHeader header;
  if (bytes.size() < kFileHeader || bytes.substr(0, 2) != "BM") return false;
  if (!ReadBitmapHeader(bytes.substr(kFileHeader), header)) return false;
  const std::int64_t rows = header.height < 0 ? -header.height : header.height;
  if (!IsSide(header.width) || !IsSide(rows)) return false;
  const std::uint64_t pixels = Number(bytes, 10, 4);
  const std::uint64_t masks = header.size == 40 && header.compression == kBitMasks ? 12 : 0;
  return pixels >= kFileHeader + header.size + masks + header.PaletteBytes() &&
         pixels + header.PixelBytes(rows) <= bytes.size();
}

bool IsPngImage(std::string_view bytes) {
  const auto sides = SidesOfPng(bytes);
  return sides && IsSide(sides->width) && IsSide(sides->height);
}

// A bitmap inside an icon: its header counts the rows of the picture and of its mask together.
bool IsIconBitmap(std::string_view bytes) {
  BitmapHeader header;
  if (!ReadBitmapHeader(bytes, header)) return false;
  if (header.size != 40 || header.compression != kUncompressed) return false;
  const std::int64_t rows = header.height / 2;
  if (!IsSide(header.width) || !IsSide(rows)) return false;
  const std::uint64_t mask =
      (static_cast<std::uint64_t>(header.width) + 31) / 32 * 4 * static_cast<std::uint64_t>(rows);
  const std::uint64_t needed = header.size + header.PaletteBytes() + header.PixelBytes(rows);
  // Many writers leave the mask of a 32-bit picture out.
  return bytes.size() >= (header.bitsPerPixel == 32 ? needed : needed + mask);
}

bool IsIconFile(std::string_view bytes) {
  constexpr std::size_t kHeader = 6;
  constexpr std::size_t kEntry = 16;
  if (bytes.size() < kHeader || Number(bytes, 0, 2) != 0 || Number(bytes, 2, 2) != 1) return false;
  const std::size_t count = Number(bytes, 4, 2);
  if (count == 0 || bytes.size() < kHeader + count * kEntry) return false;
  std::size_t left = bytes.size() - kHeader - count * kEntry;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t entry = kHeader + i * kEntry;
    const std::size_t size = Number(bytes, entry + 8, 4);
    const std::size_t offset = Number(bytes, entry + 12, 4);
    if (offset > bytes.size() || size > bytes.size() - offset) return false;
    // Thousands of entries for the same large image would take minutes to look through.
    if (size > left) return false;
    left -= size;
    const std::string_view image = bytes.substr(offset, size);
    if (!IsPngImage(image) && !IsIconBitmap(image)) return false;
  }
  return true;
}

}  // namespace

PicturePointer OwnIcon(std::string_view name) {
  return std::make_shared<Picture>(Picture{{}, std::string(name)});
}

bool IsReadablePicture(std::string_view bytes) {
  return bytes.size() <= kMaxPictureBytes && (IsIconFile(bytes) || IsBitmapFile(bytes));
}

}  // namespace tarvo
