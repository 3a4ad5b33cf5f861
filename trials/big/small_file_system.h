#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace tarvo::test {

// Runs `work` in a process of its own, with a file system in memory of so many bytes mounted at
// `folder` for that process only; temporary folders are made there. What the work expects in vain
// is told, and fails the running test. Gives the reason when the system lets no program have a file
// system of its own: nothing has been run then.
std::optional<std::string> OnSmallFileSystem(const std::string& folder, std::size_t size,
                                             const std::function<void()>& work);

// A file that leaves so many bytes, in whole pages, of the file system that it lies on.
class Filler {
 public:
  Filler(std::string path, std::size_t left);
  ~Filler();
  Filler(const Filler&) = delete;
  Filler& operator=(const Filler&) = delete;

 private:
  std::string path_;
};

// The bytes that are free on the file system that a folder lies on.
std::size_t FreeBytes(const std::string& folder);

}  // namespace tarvo::test
