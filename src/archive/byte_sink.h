#pragma once

#include <span>

namespace tarvo {

// Where a member's content goes. The bytes are made in place: first there is room, then some of it
// has been filled.
class ByteSink {
 public:
  virtual ~ByteSink() = default;

  // Where the next bytes belong; never empty.
  virtual std::span<char> Room() = 0;

  // The first `count` bytes of the room have been filled.
  virtual void Take(std::size_t count) = 0;
};

}  // namespace tarvo
