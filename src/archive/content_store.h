#pragma once

#include <cstdint>
#include <string_view>

#include "archive/byte_sink.h"
#include "platform/large_memory.h"

namespace tarvo {

// Contents kept in memory one behind the other, up to a limit.
class ContentStore final : public ByteSink {
 public:
  // May hold `most` bytes; none where the system does not have so much memory.
  explicit ContentStore(std::uint64_t most) : memory_(static_cast<std::size_t>(most)) {}

  bool HasRoomFor(std::uint64_t size) const { return size <= memory_.Bytes().size() - end_; }

  // Where the next content will begin.
  std::uint64_t End() const { return end_; }

  std::span<char> Room() override { return memory_.Bytes().subspan(end_); }
  void Take(std::size_t count) override { end_ += count; }

  // The bytes of a content.
  std::string_view Read(std::uint64_t start, std::uint64_t size) const {
    const std::span<char> content = memory_.Bytes().subspan(start, size);
    return {content.data(), content.size()};
  }

 private:
  LargeMemory memory_;
  std::size_t end_ = 0;
};

}  // namespace tarvo
