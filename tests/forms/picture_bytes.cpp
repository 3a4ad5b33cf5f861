#include "picture_bytes.h"

namespace tarvo::test {
namespace {

std::string Big32(std::uint32_t value) {
  std::string bytes = Little32(value);
  return {bytes.rbegin(), bytes.rend()};
}

std::string Header(const BitmapFields& fields, std::int32_t height) {
  std::string header =
      Little32(fields.headerSize) + Little32(static_cast<std::uint32_t>(fields.width)) +
      Little32(static_cast<std::uint32_t>(height)) + Little16(1) + Little16(fields.bits) +
      Little32(fields.compression) + Little32(0) + Little32(2835) + Little32(2835) +
      Little32(fields.paletteEntries) + Little32(0);
  header.resize(fields.headerSize);
  return header;
}

std::string Palette(const BitmapFields& fields) {
  if (fields.bits > 8) return {};
  const std::uint32_t all = 1U << fields.bits;
  return std::string(4 * (fields.paletteEntries ? fields.paletteEntries : all), '\x55');
}

// Rows of whole groups of four bytes.
std::string Rows(std::int32_t width, std::int32_t height, std::uint32_t bits) {
  const std::size_t rowBytes = (static_cast<std::size_t>(width) * bits + 31) / 32 * 4;
  return std::string(rowBytes * static_cast<std::size_t>(height < 0 ? -height : height), '\x77');
}

}  // namespace

std::string Little16(std::uint32_t value) {
  return {static_cast<char>(value), static_cast<char>(value >> 8)};
}

std::string Little32(std::uint32_t value) { return Little16(value) + Little16(value >> 16); }

std::string MakeBitmapFile(const BitmapFields& fields) {
  const bool masks = fields.headerSize == 40 && fields.compression == 3;
  const std::string front =
      Header(fields, fields.height) + std::string(masks ? 12 : 0, '\x7F') + Palette(fields);
  const std::string pixels = Rows(fields.width, fields.height, fields.bits);
  const auto offset = static_cast<std::uint32_t>(14 + front.size());
  return "BM" + Little32(offset + static_cast<std::uint32_t>(pixels.size())) + Little32(0) +
         Little32(offset) + front + pixels;
}

std::string MakeIconImage(const BitmapFields& fields, bool withMask) {
  return Header(fields, 2 * fields.height) + Palette(fields) +
         Rows(fields.width, fields.height, fields.bits) +
         (withMask ? Rows(fields.width, fields.height, 1) : "");
}

std::string PngChunk(const std::string& type, const std::string& content) {
  std::uint32_t sum = 0xFFFFFFFF;
  for (const char c : type + content) {
    sum ^= static_cast<unsigned char>(c);
    for (int bit = 0; bit < 8; ++bit) sum = sum >> 1 ^ ((sum & 1) != 0 ? 0xEDB88320 : 0);
  }
  return Big32(static_cast<std::uint32_t>(content.size())) + type + content + Big32(~sum);
}

std::string PngHeader(std::uint32_t width, std::uint32_t height, const std::string& kind) {
  return "\x89PNG\r\n\x1a\n" + PngChunk("IHDR", Big32(width) + Big32(height) + kind);
}

std::string MakePng(std::uint32_t width, std::uint32_t height) {
  return PngHeader(width, height) + PngChunk("IDAT", "not inflated") + PngChunk("IEND", "");
}

std::string MakeIconFile(const std::vector<std::string>& images) {
  std::string file =
      Little16(0) + Little16(1) + Little16(static_cast<std::uint32_t>(images.size()));
  std::size_t offset = 6 + 16 * images.size();
  for (const std::string& image : images) {
    file += std::string("\x05\x03\0\0", 4) + Little16(1) + Little16(32) +
            Little32(static_cast<std::uint32_t>(image.size())) +
            Little32(static_cast<std::uint32_t>(offset));
    offset += image.size();
  }
  for (const std::string& image : images) file += image;
  return file;
}

}  // namespace tarvo::test
