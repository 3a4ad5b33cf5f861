#include "settings/key_matcher.h"

#include <charconv>

#include "base/text.h"
#include "settings/record_layout.h"

namespace tarvo {
namespace {

// Whether all bytes are NUL: the first is, and each equals the one before it. Compared that way, as
// whole texts, they take a twentieth of the time.
bool IsPadding(std::string_view bytes) {
  return bytes.empty() ||
         (bytes.front() == '\0' && bytes.substr(1) == bytes.substr(0, bytes.size() - 1));
}

}  // namespace

LowerCaseTable MakeLowerCaseTable(Platform& platform) {
  LowerCaseTable table;
  for (std::size_t byte = 0; byte < table.size(); ++byte) {
    const std::string text = platform.DecodeCodePage(std::string(1, static_cast<char>(byte)));
    table[byte] = LowerCase(CharacterAt(text, 0).codePoint);
  }
  return table;
}

KeyMatcher::KeyMatcher(const LowerCaseTable& lowerCase, std::string_view key)
    : lowerCase_(lowerCase) {
  for (std::size_t i = 0; i < key.size();) {
    const Character c = CharacterAt(key, i);
    key_ += LowerCase(c.codePoint);
    i += c.size;
  }
}

bool KeyMatcher::StartsWithKey(std::string_view field) const {
  if (key_.size() > field.size()) return false;
  for (std::size_t i = 0; i < key_.size(); ++i) {
    if (lowerCase_[static_cast<unsigned char>(field[i])] != key_[i]) return false;
  }
  return true;
}

bool KeyMatcher::Matches(std::string_view field) const {
  return StartsWithKey(field) && IsPadding(field.substr(key_.size()));
}

std::uint64_t KeyMatcher::ChunkIn(std::string_view field) const {
  if (!StartsWithKey(field)) return 0;
  std::string_view rest = field.substr(key_.size());
  if (IsPadding(rest)) return 1;
  // Only the decimal form without leading zeros is a chunk's number.
  if (rest.size() < 2 || rest[0] != kContinuationSign || rest[1] == '0') return 0;
  rest.remove_prefix(1);
  std::uint64_t number = 0;
  const auto [end, failure] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
  const bool isNumber = failure == std::errc{} && number >= 2;
  const auto digits = static_cast<std::size_t>(end - rest.data());
  return isNumber && IsPadding(rest.substr(digits)) ? number : 0;
}

KeyIndex::KeyIndex(const LowerCaseTable& lowerCase, const std::vector<std::string>& keys)
    : lowerCase_(lowerCase) {
  matchers_.reserve(keys.size());
  firsts_.reserve(keys.size());
  for (const std::string& key : keys) {
    const std::size_t position = matchers_.size();
    matchers_.emplace_back(lowerCase_, key);
    firsts_.push_back(positions_.try_emplace(matchers_.back().Key(), position).first->second);
  }
}

KeyIndex::Hit KeyIndex::ChunkIn(std::string_view field) const {
  constexpr std::string_view kEndsOfKey{"\0~", 2};
  static_assert(kEndsOfKey[1] == kContinuationSign);
  const std::string_view stored = field.substr(0, field.find_first_of(kEndsOfKey));
  std::u32string key(stored.size(), U'\0');
  for (std::size_t i = 0; i < stored.size(); ++i) {
    key[i] = lowerCase_[static_cast<unsigned char>(stored[i])];
  }
  const auto found = positions_.find(key);
  if (found == positions_.end()) return {0, 0};
  return {found->second, matchers_[found->second].ChunkIn(field)};
}

}  // namespace tarvo
