#include "base/code_page.h"

#include "base/text.h"

namespace tarvo {
namespace {

// The characters of bytes 0x80 to 0x9F; all others have the code point of their byte.
constexpr char32_t kFrom80[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

char EncodeCharacter(char32_t c) {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
  for (int i = 0; i < 32; ++i) {
    if (kFrom80[i] == c) return static_cast<char>(0x80 + i);
  }
  return '?';
}

}  // namespace

std::string EncodeWindows1252(std::string_view utf8) {
  std::string bytes;
  bytes.reserve(utf8.size());
  ForEachRun(
      utf8, [&](std::string_view ascii) { bytes += ascii; },
      [&](char32_t c) { bytes += EncodeCharacter(c); });
  return bytes;
}

std::string DecodeWindows1252(std::string_view bytes) {
  std::string utf8;
  utf8.reserve(bytes.size());
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const std::size_t end = EndOfAscii(bytes, i);
    utf8.append(bytes, i, end - i);
    i = end;
    if (i == bytes.size()) break;
    const auto byte = static_cast<unsigned char>(bytes[i]);
    AppendCharacter(utf8, byte < 0xA0 ? kFrom80[byte - 0x80] : byte);
  }
  return utf8;
}

}  // namespace tarvo
