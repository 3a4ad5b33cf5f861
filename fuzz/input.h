#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tarvo::fuzz {

// The fuzzer's bytes, taken from the front. Behind their end there are only zeros and empty texts,
// so that every input means something.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size)
      : rest_(reinterpret_cast<const char*>(data), size) {}

  bool IsEmpty() const { return rest_.empty(); }

  unsigned Byte() {
    const std::string_view byte = Bytes(1);
    return byte.empty() ? 0 : static_cast<unsigned char>(byte[0]);
  }

  // Little-endian.
  unsigned Number16() {
    const unsigned low = Byte();
    return low | Byte() << 8;
  }

  // One of `choices` values, from 0.
  unsigned Choice(unsigned choices) { return Byte() % choices; }

  std::string_view Bytes(std::size_t count) {
    const std::string_view bytes = rest_.substr(0, count);
    rest_.remove_prefix(bytes.size());
    return bytes;
  }

  // A text up to a line feed, which is passed over.
  std::string_view Line() {
    const std::string_view line = rest_.substr(0, rest_.find('\n'));
    rest_.remove_prefix(std::min(line.size() + 1, rest_.size()));
    return line;
  }

  std::string_view Rest() { return Bytes(rest_.size()); }

 private:
  std::string_view rest_;
};

}  // namespace tarvo::fuzz
