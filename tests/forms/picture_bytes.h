#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tarvo::test {

// The fields of a bitmap's header; the rest follows from them unless a test says otherwise.
struct BitmapFields {
  std::uint32_t headerSize = 40;
  std::int32_t width = 5;
  std::int32_t height = 3;
  std::uint16_t bits = 24;
  std::uint32_t compression = 0;
  std::uint32_t paletteEntries = 0;
};

// Whole numbers, the lowest byte first.
std::string Little16(std::uint32_t value);
std::string Little32(std::uint32_t value);

// A bitmap file of just the length that its header asks for.
std::string MakeBitmapFile(const BitmapFields& fields);

// An image of an icon file: the header's height counts picture and mask; `height` is the picture's.
std::string MakeIconImage(const BitmapFields& fields, bool withMask = true);

// A chunk of a PNG stream with a true checksum, and such a stream's beginning: signature and header
// chunk. `kind` is what the header says behind the sides; the default is 8 bits of each of red,
// green, blue and alpha.
std::string PngChunk(const std::string& type, const std::string& content);
std::string PngHeader(std::uint32_t width, std::uint32_t height,
                      const std::string& kind = std::string("\x08\x06\0\0\0", 5));
// A PNG stream with header, a data chunk and end.
std::string MakePng(std::uint32_t width, std::uint32_t height);

// An icon file that holds the images behind one another.
std::string MakeIconFile(const std::vector<std::string>& images);

}  // namespace tarvo::test
