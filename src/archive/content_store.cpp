#include "archive/content_store.h"

#include <algorithm>

namespace tarvo {

std::span<char> ContentStore::Room() {
  const std::size_t chunk = static_cast<std::size_t>(end_ / kChunk);
  if (chunk == chunks_.size()) chunks_.push_back(std::make_unique_for_overwrite<char[]>(kChunk));
  const std::size_t filled = static_cast<std::size_t>(end_ % kChunk);
  return {chunks_[chunk].get() + filled, kChunk - filled};
}

void ContentStore::Read(std::uint64_t start, std::uint64_t size,
                        const std::function<void(std::string_view)>& take) const {
  while (size > 0) {
    const std::size_t from = static_cast<std::size_t>(start % kChunk);
    const std::size_t count =
        static_cast<std::size_t>(std::min<std::uint64_t>(size, kChunk - from));
    take({chunks_[static_cast<std::size_t>(start / kChunk)].get() + from, count});
    start += count;
    size -= count;
  }
}

}  // namespace tarvo
