#pragma once

#include <signal.h>
#include <sys/types.h>

#include <chrono>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace tarvo::test {

// Whether a condition comes true before a deadline. Asks again and again, but leaves the processor
// to whoever makes it true.
inline bool ComesTrue(const std::function<bool()>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return true;
}

// A process that a test starts and that ends with it, whatever becomes of the test.
class TestProcess {
 public:
  TestProcess() = default;

  // `environment` holds what is set for the process alone, as "NAME=value".
  explicit TestProcess(const std::vector<std::string>& words,
                       const std::vector<std::string>& environment = {});
  ~TestProcess() { End(); }
  TestProcess(TestProcess&& other) noexcept : process_(std::exchange(other.process_, 0)) {}
  TestProcess& operator=(TestProcess&& other) noexcept {
    std::swap(process_, other.process_);
    return *this;
  }

  // Sends the signal and waits for the end.
  void End(int signal = SIGKILL);

 private:
  pid_t process_ = 0;
};

}  // namespace tarvo::test
