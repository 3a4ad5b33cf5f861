#pragma once

#include <unistd.h>

#include <utility>

namespace tarvo {

// An open file descriptor, closed at the end of its life; -1 for none.
class Descriptor {
 public:
  explicit Descriptor(int value = -1) : value_(value) {}
  ~Descriptor() {
    if (value_ >= 0) ::close(value_);
  }
  Descriptor(Descriptor&& other) noexcept : value_(other.Release()) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }

  int Get() const { return value_; }
  int Release() { return std::exchange(value_, -1); }

 private:
  int value_;
};

}  // namespace tarvo
