#include "support/pictures.h"

namespace tarvo::test {
namespace {

void Append(std::string& bytes, unsigned value, int size) {
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xFF);
}

// A bitmap header for 1 by 1 pixels of 32 bits, counting `rows`, and the pixel.
std::string OnePixel(unsigned rows, unsigned char shade) {
  std::string bytes;
  Append(bytes, 40, 4);
  Append(bytes, 1, 4);
  Append(bytes, rows, 4);
  Append(bytes, 1, 2);
  Append(bytes, 32, 2);
  bytes.append(24, '\0');
  Append(bytes, 0xFF000000U | shade * 0x010101U, 4);
  return bytes;
}

}  // namespace

std::string IconFile(unsigned char shade) {
  const std::string image = OnePixel(2, shade) + std::string(4, '\0');
  std::string bytes;
  Append(bytes, 0, 2);
  Append(bytes, 1, 2);
  Append(bytes, 1, 2);
  Append(bytes, 0x0101, 4);
  Append(bytes, 1, 2);
  Append(bytes, 32, 2);
  Append(bytes, static_cast<unsigned>(image.size()), 4);
  Append(bytes, 22, 4);
  return bytes + image;
}

std::string BitmapFile(unsigned char shade) {
  const std::string image = OnePixel(1, shade);
  std::string bytes = "BM";
  Append(bytes, static_cast<unsigned>(14 + image.size()), 4);
  Append(bytes, 0, 4);
  Append(bytes, 54, 4);
  return bytes + image;
}

}  // namespace tarvo::test
