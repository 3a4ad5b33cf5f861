#include "platform/windows/wide_text.h"

#include <optional>

#include "base/text.h"

namespace tarvo {
namespace {

constexpr char32_t kFirstHigh = 0xD800;
constexpr char32_t kFirstLow = 0xDC00;
constexpr char32_t kLastLow = 0xDFFF;
constexpr char32_t kFirstBeyond = 0x10000;

bool IsHigh(char32_t unit) { return unit >= kFirstHigh && unit < kFirstLow; }
bool IsLow(char32_t unit) { return unit >= kFirstLow && unit <= kLastLow; }

// The surrogate whose three bytes stand at `at`.
std::optional<wchar_t> LoneSurrogateAt(std::string_view text, std::size_t at) {
  if (at + 3 > text.size()) return std::nullopt;
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[at + i]); };
  const bool isSurrogate = byte(0) == 0xED && (byte(1) & 0xE0) == 0xA0 && (byte(2) & 0xC0) == 0x80;
  if (!isSurrogate) return std::nullopt;
  return static_cast<wchar_t>(0xD000 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F));
}

void AppendLoneSurrogate(std::string& text, char32_t unit) {
  text += '\xED';
  text += static_cast<char>(0x80 | (unit >> 6 & 0x3F));
  text += static_cast<char>(0x80 | (unit & 0x3F));
}

}  // namespace

std::string Narrow(std::wstring_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char32_t unit = text[i];
    const char32_t next = i + 1 < text.size() ? text[i + 1] : 0;
    if (IsHigh(unit) && IsLow(next)) {
      AppendCharacter(result, kFirstBeyond + ((unit - kFirstHigh) << 10) + (next - kFirstLow));
      ++i;
    } else if (IsHigh(unit) || IsLow(unit)) {
      AppendLoneSurrogate(result, unit);
    } else {
      AppendCharacter(result, unit);
    }
  }
  return result;
}

std::wstring Wide(std::string_view utf8) {
  constexpr wchar_t kReplacement = 0xFFFD;
  std::wstring result;
  result.reserve(utf8.size());
  for (std::size_t i = 0; i < utf8.size();) {
    const Character c = CharacterAt(utf8, i);
    if (c.codePoint >= kBadByte) {
      const auto surrogate = LoneSurrogateAt(utf8, i);
      result += surrogate.value_or(kReplacement);
      i += surrogate ? 3 : 1;
      continue;
    }
    if (c.codePoint >= kFirstBeyond) {
      const char32_t beyond = c.codePoint - kFirstBeyond;
      result += static_cast<wchar_t>(kFirstHigh + (beyond >> 10));
      result += static_cast<wchar_t>(kFirstLow + (beyond & 0x3FF));
    } else {
      result += static_cast<wchar_t>(c.codePoint);
    }
    i += c.size;
  }
  return result;
}

bool IsWhole(std::string_view utf8) { return Narrow(Wide(utf8)) == utf8; }

}  // namespace tarvo
