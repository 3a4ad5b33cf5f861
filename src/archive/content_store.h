#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "archive/byte_sink.h"

namespace tarvo {

// Contents kept in memory one behind the other, up to a limit.
class ContentStore final : public ByteSink {
 public:
  // May hold `most` bytes.
  explicit ContentStore(std::uint64_t most) : most_(most) {}

  bool HasRoomFor(std::uint64_t size) const { return size <= most_ - end_; }

  // Where the next content will begin.
  std::uint64_t End() const { return end_; }

  std::span<char> Room() override;
  void Take(std::size_t count) override { end_ += count; }

  // Hands over the bytes of a content piece by piece.
  void Read(std::uint64_t start, std::uint64_t size,
            const std::function<void(std::string_view)>& take) const;

 private:
  static constexpr std::size_t kChunk = std::size_t{1024} * 1024;

  std::uint64_t most_;
  std::uint64_t end_ = 0;
  std::vector<std::unique_ptr<char[]>> chunks_;
};

}  // namespace tarvo
