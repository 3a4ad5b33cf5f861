#pragma once

#include <chrono>
#include <functional>
#include <thread>

namespace tarvo::test {

// Whether a condition comes true before the deadline.
inline bool ComesTrue(const std::function<bool()>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::yield();
  }
  return true;
}

}  // namespace tarvo::test
