#pragma once

#include <array>
#include <unordered_map>

#include "base/text.h"

namespace tarvo {

// Where the records that begin with a character start, letter case ignored.
class InitialIndex {
 public:
  // Enters the position of the first record that begins with a character; false, changing nothing,
  // when the character or its other letter case has one already.
  bool Add(char32_t initial, int position) {
    const char32_t key = LowerCase(initial);
    if (key >= ascii_.size()) return others_.emplace(key, position).second;
    if (ascii_[key] != 0) return false;
    ascii_[key] = position;
    return true;
  }

  // The position of a character's first record; 0 when no record begins with it.
  int Find(char32_t initial) const {
    const char32_t key = LowerCase(initial);
    if (key < ascii_.size()) return ascii_[key];
    const auto found = others_.find(key);
    return found == others_.end() ? 0 : found->second;
  }

  void Clear() {
    ascii_.fill(0);
    others_.clear();
  }

 private:
  std::array<int, 128> ascii_{};  // nearly every phrase begins with one of these
  std::unordered_map<char32_t, int> others_;
};

}  // namespace tarvo
