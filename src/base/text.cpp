#include "base/text.h"

#include <cstdint>
#include <cstring>

namespace tarvo {
namespace {

unsigned char Byte(std::string_view text, std::size_t i) {
  return static_cast<unsigned char>(text[i]);
}

// A run of upper-case letters whose lower-case forms lie at a fixed distance, or that alternate
// with them.
struct CaseRange {
  char32_t firstUpper;
  char32_t lastUpper;
  char32_t distance;  // to the lower-case letter; 1 means that upper and lower case alternate
};

constexpr CaseRange kCaseRanges[] = {
    {U'A', U'Z', 32},     {0x00C0, 0x00D6, 32}, {0x00D8, 0x00DE, 32}, {0x0100, 0x012E, 1},
    {0x0132, 0x0136, 1},  {0x0139, 0x0147, 1},  {0x014A, 0x0176, 1},  {0x0179, 0x017D, 1},
    {0x01CD, 0x01DB, 1},  {0x01DE, 0x01EE, 1},  {0x01F8, 0x021E, 1},  {0x0222, 0x0232, 1},
    {0x0386, 0x0386, 38}, {0x0388, 0x038A, 37}, {0x038C, 0x038C, 64}, {0x038E, 0x038F, 63},
    {0x0391, 0x03A1, 32}, {0x03A3, 0x03AB, 32}, {0x0400, 0x040F, 80}, {0x0410, 0x042F, 32},
    {0x0460, 0x0480, 1},  {0x048A, 0x04BE, 1},  {0x04C1, 0x04CD, 1},  {0x04D0, 0x052E, 1},
    {0x0531, 0x0556, 48}, {0x1E00, 0x1E94, 1},  {0x1EA0, 0x1EFE, 1},
};

// Y with diaeresis: the one pair of the Latin code pages that lies apart.
constexpr char32_t kUpperYDiaeresis = 0x0178;
constexpr char32_t kLowerYDiaeresis = 0x00FF;

// The sigma at the end of a word has no upper-case letter of its own.
constexpr char32_t kFinalSigma = 0x03C2;
constexpr char32_t kUpperSigma = 0x03A3;

bool IsUpperIn(const CaseRange& range, char32_t c) {
  if (c < range.firstUpper || c > range.lastUpper) return false;
  return range.distance != 1 || (c - range.firstUpper) % 2 == 0;
}

template <char32_t (*Map)(char32_t)>
std::string MapText(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const Character c = CharacterAt(text, i);
    AppendCharacter(result, Map(c.codePoint));
    i += c.size;
  }
  return result;
}

}  // namespace

Character CharacterBeyondAsciiAt(std::string_view text, std::size_t offset) {
  const unsigned char lead = Byte(text, offset);
  const Character bad{kBadByte + lead, 1};
  const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || offset + size > text.size()) return bad;
  char32_t value = lead & (0x7F >> size);
  for (std::size_t i = 1; i < size; ++i) {
    const unsigned char next = Byte(text, offset + i);
    if ((next & 0xC0) != 0x80) return bad;
    value = (value << 6) | (next & 0x3F);
  }
  const bool overlong = (size == 3 && value < 0x800) || (size == 4 && value < 0x10000);
  const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
  if (overlong || surrogate || value > 0x10FFFF) return bad;
  return {value, size};
}

std::size_t EndOfAscii(std::string_view text, std::size_t start) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  std::uint64_t word = 0;
  while (text.size() - start >= sizeof word) {
    std::memcpy(&word, text.data() + start, sizeof word);
    if ((word & kHighBits) != 0) break;
    start += sizeof word;
  }
  while (start < text.size() && Byte(text, start) < 0x80) ++start;
  return start;
}

void AppendCharacter(std::string& text, char32_t c) {
  const auto tail = [&](int shift) { text += static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
  if (c >= kBadByte) {
    text += static_cast<char>(c - kBadByte);
  } else if (c < 0x80) {
    text += static_cast<char>(c);
  } else if (c < 0x800) {
    text += static_cast<char>(0xC0 | (c >> 6));
    tail(0);
  } else if (c < 0x10000) {
    text += static_cast<char>(0xE0 | (c >> 12));
    tail(6);
    tail(0);
  } else {
    text += static_cast<char>(0xF0 | (c >> 18));
    tail(12);
    tail(6);
    tail(0);
  }
}

std::size_t CharacterCount(std::string_view text) {
  std::size_t count = 0;
  ForEachRun(
      text, [&](std::string_view ascii) { count += ascii.size(); }, [&](char32_t) { ++count; });
  return count;
}

std::string_view FirstCharacter(std::string_view text) {
  return text.empty() ? text : text.substr(0, CharacterAt(text, 0).size);
}

std::string ValidUtf8(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  ForEachRun(
      text, [&](std::string_view ascii) { result += ascii; },
      [&](char32_t c) { AppendCharacter(result, c >= kBadByte ? U'\uFFFD' : c); });
  return result;
}

char32_t LowerCase(char32_t c) {
  if (c == kUpperYDiaeresis) return kLowerYDiaeresis;
  for (const CaseRange& range : kCaseRanges) {
    if (c < range.firstUpper) break;
    if (IsUpperIn(range, c)) return c + range.distance;
  }
  return c;
}

char32_t UpperCase(char32_t c) {
  if (c < 0x80) return c >= U'a' && c <= U'z' ? c - 32 : c;
  if (c == kLowerYDiaeresis) return kUpperYDiaeresis;
  if (c == kFinalSigma) return kUpperSigma;
  for (const CaseRange& range : kCaseRanges) {
    if (c > range.distance && IsUpperIn(range, c - range.distance)) return c - range.distance;
  }
  return c;
}

std::string LowerCase(std::string_view text) { return MapText<LowerCase>(text); }
std::string UpperCase(std::string_view text) { return MapText<UpperCase>(text); }

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
  return CompareIgnoringCase(a, b) == 0;
}

int CompareIgnoringCase(std::string_view a, std::string_view b) {
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < a.size() && j < b.size()) {
    const Character x = CharacterAt(a, i);
    const Character y = CharacterAt(b, j);
    const char32_t lowerX = LowerCase(x.codePoint);
    const char32_t lowerY = LowerCase(y.codePoint);
    if (lowerX != lowerY) return lowerX < lowerY ? -1 : 1;
    i += x.size;
    j += y.size;
  }
  return static_cast<int>(i < a.size()) - static_cast<int>(j < b.size());
}

std::string_view CutAtNul(std::string_view text) { return text.substr(0, text.find('\0')); }

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  for (std::size_t i = 0;;) {
    const std::size_t hit = text.find(from, i);
    result += text.substr(i, hit - i);
    if (hit == std::string_view::npos) return result;
    result += to;
    i = hit + from.size();
  }
}

}  // namespace tarvo
