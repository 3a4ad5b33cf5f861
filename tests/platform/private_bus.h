#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/temporary_folder.h"

namespace tarvo::test {

// Whether a condition comes true before a deadline.
inline bool ComesTrue(const std::function<bool()>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::yield();
  }
  return true;
}

// A process that a test starts and that ends with it, whatever becomes of the test.
class TestProcess {
 public:
  TestProcess() = default;
  explicit TestProcess(const std::vector<std::string>& words);
  ~TestProcess() { End(); }
  TestProcess(TestProcess&& other) noexcept : process_(std::exchange(other.process_, 0)) {}
  TestProcess& operator=(TestProcess&& other) noexcept {
    std::swap(process_, other.process_);
    return *this;
  }
  void End();

 private:
  pid_t process_ = 0;
};

// A session bus of the test's own, at an address that only who is told knows. Its daemon ends with
// the test.
class PrivateBus {
 public:
  PrivateBus();

  const std::string& Address() const { return address_; }

  // Ends the daemon, as at the end of a session.
  void End() { daemon_.End(); }

  // Has the daemon start a command for a name that nobody owns.
  void MakeStartable(const std::string& name, const std::string& command) const;

  // Whether somebody owns a name.
  bool HasOwner(const std::string& name) const;

 private:
  TemporaryFolder folder_;
  std::string address_;
  TestProcess daemon_;
};

}  // namespace tarvo::test
