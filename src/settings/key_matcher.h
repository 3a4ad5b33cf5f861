#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

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

  // The key in lower case.
  const std::u32string& Key() const { return key_; }

 private:
  bool StartsWithKey(std::string_view field) const;

  const LowerCaseTable& lowerCase_;
  std::u32string key_;  // in lower case
};

// Compares key fields with many keys at once.
class KeyIndex {
 public:
  // Where the key of a field stands among the keys, and which chunk of its value the field
  // announces, as KeyMatcher::ChunkIn; chunk 0 for a field of none of them.
  struct Hit {
    std::size_t position;
    std::uint64_t chunk;
  };

  // The table must outlive the index.
  KeyIndex(const LowerCaseTable& lowerCase, const std::vector<std::string>& keys);

  Hit ChunkIn(std::string_view field) const;

  // The first position of the key at `position`, letter case ignored: the one that hits give.
  std::size_t PositionOf(std::size_t position) const { return firsts_[position]; }

 private:
  const LowerCaseTable& lowerCase_;
  std::vector<KeyMatcher> matchers_;
  std::vector<std::size_t> firsts_;
  std::unordered_map<std::u32string, std::size_t> positions_;
};

}  // namespace tarvo
