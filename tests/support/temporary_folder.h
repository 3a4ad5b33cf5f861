#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tarvo::test {

// A folder of a test's own, removed with everything in it at the end of the test. While the object
// lives, the process's current folder may be changed at will: it is put back afterwards.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  // The folder's real path (no symbolic link in it), without a separator at its end.
  const std::string& Path() const { return path_; }
  // The path of something below, with the system's separator for each "/" in `name`.
  std::string operator/(std::string_view name) const;

  // Makes a folder with its parents, or a file with its parents and content, below this one; gives
  // its full path.
  std::string MakeFolder(std::string_view name) const;
  std::string WriteFile(std::string_view name, std::string_view content = {}) const;

  // A program that runs the commands of a shell script; where the system runs no shell scripts,
  // only the program without commands can be had, which ends at once.
  std::string WriteProgram(std::string_view name, std::string_view commands) const;

  // The same with a program that first adds a line to the file `notes`: its path and its arguments.
  std::string WriteNotingProgram(std::string_view name, const std::string& notes,
                                 std::string_view commands) const;

  std::string ReadFile(std::string_view name) const;

 private:
  std::filesystem::path previous_;
  std::string path_;
};

// The file's bytes; fails the running test when it cannot be read.
std::string ReadFileAt(const std::string& path);

}  // namespace tarvo::test
