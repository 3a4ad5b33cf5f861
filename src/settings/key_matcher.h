#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/platform.h"

namespace tarvo {

// The lower case of every byte of the system's code page, as a code point.
using LowerCaseTable = std::array<char32_t, 256>;
LowerCaseTable MakeLowerCaseTable(Platform& platform);

// Compares key fields with one key, without regard to letter case and without decoding them. A key
// with a character that the code page lacks matches nothing, since no record can hold it.
class KeyMatcher {
 public:
  // The table must outlive the matcher.
  KeyMatcher(const LowerCaseTable& lowerCase, std::string_view key);

  // Whether a key field holds the key and nothing but NUL bytes behind it.
  bool Matches(std::string_view field) const;

  // Which chunk of the key's value a key field announces: 1 for the key itself, n for key & "~" & n
  // when n is 2 or more, 0 for any other field.
  std::uint64_t ChunkIn(std::string_view field) const;

 private:
  bool StartsWithKey(std::string_view field) const;

  const LowerCaseTable& lowerCase_;
  std::u32string key_;  // in lower case
};

}  // namespace tarvo
