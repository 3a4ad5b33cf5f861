#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tarvo {

// Text is UTF-8. A character is a Unicode code point. Bytes that are not valid UTF-8 (file names
// may hold any byte) count as one character each and are kept as they stand.

// One character read from the front of a text.
struct Character {
  char32_t codePoint;  // kBadByte + the byte, for a byte that is not part of valid UTF-8
  std::size_t size;    // in bytes
};
inline constexpr char32_t kBadByte = 0x110000;

// The character at byte `offset`, where a byte of 0x80 or more stands.
Character CharacterBeyondAsciiAt(std::string_view text, std::size_t offset);

// The character at byte `offset`, which must be less than the text's size. Most are ASCII, which
// this tells without a call.
inline Character CharacterAt(std::string_view text, std::size_t offset) {
  const auto lead = static_cast<unsigned char>(text[offset]);
  return lead < 0x80 ? Character{lead, 1} : CharacterBeyondAsciiAt(text, offset);
}

// Where the run of ASCII characters ends that begins at byte `start`: at `start` itself when there
// is none.
std::size_t EndOfAscii(std::string_view text, std::size_t start);

// Hands on a text in order: each run of ASCII characters as one text, every other character by its
// code point. Text that is mostly ASCII takes a fraction of the time of single characters.
template <typename TakeAscii, typename TakeOther>
void ForEachRun(std::string_view text, TakeAscii takeAscii, TakeOther takeOther) {
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t end = EndOfAscii(text, i);
    takeAscii(text.substr(i, end - i));
    if (end == text.size()) return;
    const Character c = CharacterBeyondAsciiAt(text, end);
    takeOther(c.codePoint);
    i = end + c.size;
  }
}

// The UTF-8 form of a code point; a value made from kBadByte gives that byte.
void AppendCharacter(std::string& text, char32_t codePoint);

std::size_t CharacterCount(std::string_view text);

// The first character's bytes; "" for an empty text.
std::string_view FirstCharacter(std::string_view text);

// The text with each invalid byte replaced by U+FFFD: what may be shown, and what JSON may hold.
std::string ValidUtf8(std::string_view text);

// Simple letter case mapping of single characters, the same on every system and in every locale:
// ASCII, Latin-1, Latin Extended-A and -B as far as they alternate, Greek, Cyrillic and Armenian.
char32_t LowerCase(char32_t codePoint);
char32_t UpperCase(char32_t codePoint);
std::string LowerCase(std::string_view text);
std::string UpperCase(std::string_view text);

// Equality and order without regard to letter case, by the code points' lower case. The order is
// independent of the locale; negative, zero or positive as for std::string::compare.
bool EqualIgnoringCase(std::string_view a, std::string_view b);
int CompareIgnoringCase(std::string_view a, std::string_view b);

// The text before the first NUL character.
std::string_view CutAtNul(std::string_view text);

// `text` with every occurrence of `from` (not empty) replaced by `to`.
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

}  // namespace tarvo
