#include "small_file_system.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <stdlib.h>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <utility>

namespace tarvo::test {
namespace {

constexpr int kRefused = 77;  // the process's end when it may not mount

// True when it could be written.
bool Write(const char* path, const std::string& text) {
  std::ofstream file(path);
  file << text;
  return static_cast<bool>(file.flush());
}

// Makes the process its own superuser, as far as the system allows that to users.
bool BecomeOwnUser() {
  const std::string user = "0 " + std::to_string(::getuid()) + " 1";
  const std::string group = "0 " + std::to_string(::getgid()) + " 1";
  if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
  return Write("/proc/self/setgroups", "deny") && Write("/proc/self/uid_map", user) &&
         Write("/proc/self/gid_map", group);
}

bool Mount(const std::string& folder, std::size_t size) {
  const std::string options = "size=" + std::to_string(size);
  return ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
         ::mount("tmpfs", folder.c_str(), "tmpfs", 0, options.c_str()) == 0;
}

[[noreturn]] void EndWith(int status) {
  std::cout.flush();
  std::fflush(nullptr);
  ::_exit(status);
}

[[noreturn]] void WorkOn(const std::string& folder, std::size_t size,
                         const std::function<void()>& work) {
  if (!BecomeOwnUser() || !Mount(folder, size)) {
    std::cout << "mounting was refused: " << std::strerror(errno) << "\n";
    EndWith(kRefused);
  }
  ::setenv("TMPDIR", folder.c_str(), 1);
  try {
    work();
  } catch (const std::exception& error) {
    std::cout << "it has thrown: " << error.what() << "\n";
    EndWith(EXIT_FAILURE);
  }
  EndWith(::testing::Test::HasFailure() ? EXIT_FAILURE : EXIT_SUCCESS);
}

}  // namespace

std::optional<std::string> OnSmallFileSystem(const std::string& folder, std::size_t size,
                                             const std::function<void()>& work) {
  std::cout.flush();
  const pid_t child = ::fork();
  if (child < 0) throw std::runtime_error("no process can be made");
  if (child == 0) WorkOn(folder, size, work);
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
  const int code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  if (code == kRefused) return "this system lets no user mount a file system of their own";
  EXPECT_EQ(code, EXIT_SUCCESS) << "in the process of its own, see above";
  return std::nullopt;
}

Filler::Filler(std::string path, std::size_t left) : path_(std::move(path)) {
  const int file = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (file < 0) throw std::runtime_error("cannot make " + path_);
  const std::size_t free = FreeBytes(path_);
  const off_t size = free > left ? static_cast<off_t>(free - left) : 0;
  if (size > 0 && ::posix_fallocate(file, 0, size) != 0) {
    throw std::runtime_error("cannot fill the file system");
  }
  ::close(file);
}

Filler::~Filler() { ::unlink(path_.c_str()); }

std::size_t FreeBytes(const std::string& folder) {
  struct statvfs status {};
  if (::statvfs(folder.c_str(), &status) != 0) throw std::runtime_error("no file system");
  return static_cast<std::size_t>(status.f_bavail) * status.f_frsize;
}

}  // namespace tarvo::test
