#pragma once

#include <stdlib.h>
#include <unistd.h>

#include <optional>
#include <string>

namespace tarvo::test {

// While it lives, temporary folders are made in memory where the system offers that: a disk waits
// at each file that replaces another, which takes minutes where thousands are replaced.
class MemoryFolders {
 public:
  MemoryFolders() {
    if (const char* value = ::getenv(kVariable)) previous_ = value;
    if (::access(kMemory, W_OK | X_OK) == 0) ::setenv(kVariable, kMemory, 1);
  }
  ~MemoryFolders() {
    if (previous_) {
      ::setenv(kVariable, previous_->c_str(), 1);
    } else {
      ::unsetenv(kVariable);
    }
  }
  MemoryFolders(const MemoryFolders&) = delete;
  MemoryFolders& operator=(const MemoryFolders&) = delete;

 private:
  static constexpr const char* kVariable = "TMPDIR";
  static constexpr const char* kMemory = "/dev/shm";
  std::optional<std::string> previous_;
};

}  // namespace tarvo::test
