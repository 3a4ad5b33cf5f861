#pragma once

#include <cstddef>
#include <span>

namespace tarvo {

// Memory for large contents, whose pages the system gives only as far as they are written to, and
// in large pages where it has them: that costs a fraction of the time.
class LargeMemory {
 public:
  // `size` bytes, or none where the system does not have them.
  explicit LargeMemory(std::size_t size);
  ~LargeMemory();
  LargeMemory(const LargeMemory&) = delete;
  LargeMemory& operator=(const LargeMemory&) = delete;

  std::span<char> Bytes() const { return bytes_; }

 private:
  std::span<char> bytes_;
  std::span<char> mapping_;  // what of the system's memory they lie in
};

}  // namespace tarvo
