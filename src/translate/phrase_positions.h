#pragma once

#include <bit>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "translate/mo_file.h"

namespace tarvo {

// Where each phrase stands in a row of records, so that a scan for a phrase need not look at the
// records before it. A phrase that stands there twice has its first position.
class PhrasePositions {
 public:
  static constexpr std::size_t kNone = SIZE_MAX;

  void Build(const std::vector<MoEntry>& records) {
    slots_.assign(std::bit_ceil(2 * records.size() + 1), 0);
    for (std::size_t i = 0; i < records.size(); ++i) {
      std::uint32_t& slot = slots_[SlotOf(records, records[i].original)];
      if (slot == 0) slot = static_cast<std::uint32_t>(i + 1);
    }
  }

  // The position, counted from 0, of the record whose original is exactly the phrase, among the
  // records of the last Build.
  std::size_t Find(const std::vector<MoEntry>& records, std::string_view phrase) const {
    const std::uint32_t slot = slots_.empty() ? 0 : slots_[SlotOf(records, phrase)];
    return slot == 0 ? kNone : slot - 1;
  }

 private:
  // The slot that holds the phrase, or the free one that it would get. At least half are free.
  std::size_t SlotOf(const std::vector<MoEntry>& records, std::string_view phrase) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t i = std::hash<std::string_view>()(phrase) & mask;
    while (slots_[i] != 0 && records[slots_[i] - 1].original != phrase) i = (i + 1) & mask;
    return i;
  }

  std::vector<std::uint32_t> slots_;  // position + 1, 0 for a free slot
};

}  // namespace tarvo
