#include "platform/linux/linux_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "base/runtime_error.h"

namespace tarvo {
namespace {

class LinuxFile final : public File {
 public:
  LinuxFile(int descriptor, std::string path) : descriptor_(descriptor), path_(std::move(path)) {}
  ~LinuxFile() override { ::close(descriptor_); }
  LinuxFile(const LinuxFile&) = delete;
  LinuxFile& operator=(const LinuxFile&) = delete;

  std::uint64_t Size() override {
    struct stat status;
    if (::fstat(descriptor_, &status) != 0) throw RuntimeError::FromErrno(errno, path_);
    return static_cast<std::uint64_t>(status.st_size);
  }

  std::string ReadAt(std::uint64_t offset, std::size_t count) override {
    std::string bytes(count, '\0');
    std::size_t done = 0;
    while (done < count) {
      const ssize_t got = ::pread(descriptor_, bytes.data() + done, count - done,
                                  static_cast<off_t>(offset + done));
      if (got < 0 && errno == EINTR) continue;
      if (got < 0) throw RuntimeError::FromErrno(errno, path_);
      if (got == 0) break;
      done += static_cast<std::size_t>(got);
    }
    bytes.resize(done);
    return bytes;
  }

  void WriteAt(std::uint64_t offset, std::string_view bytes) override {
    std::size_t done = 0;
    while (done < bytes.size()) {
      const ssize_t put = ::pwrite(descriptor_, bytes.data() + done, bytes.size() - done,
                                   static_cast<off_t>(offset + done));
      if (put < 0 && errno == EINTR) continue;
      if (put < 0) throw RuntimeError::FromErrno(errno, path_);
      if (put == 0) throw RuntimeError::FromErrno(ENOSPC, path_);
      done += static_cast<std::size_t>(put);
    }
  }

 private:
  int descriptor_;
  std::string path_;
};

}  // namespace

std::unique_ptr<File> OpenLinuxFile(std::string_view path, OpenFor use) {
  // O_NONBLOCK: a pipe or device under a file's name must not hang the program. It is refused
  // below.
  const int flags =
      (use == OpenFor::kReading ? O_RDONLY : O_RDWR | O_CREAT) | O_CLOEXEC | O_NONBLOCK;
  std::string name(path);
  if (name.find('\0') != std::string::npos) throw RuntimeError(kBadFileName);
  int descriptor;
  do {
    descriptor = ::open(name.c_str(), flags, 0666);
  } while (descriptor < 0 && errno == EINTR);
  if (descriptor < 0) throw RuntimeError::FromErrno(errno, name);
  auto file = std::make_unique<LinuxFile>(descriptor, name);
  struct stat status;
  if (::fstat(descriptor, &status) != 0) throw RuntimeError::FromErrno(errno, name);
  if (!S_ISREG(status.st_mode)) {
    throw RuntimeError(kPathFileAccessError,
                       StandardDescription(kPathFileAccessError) + ": " + name);
  }
  return file;
}

}  // namespace tarvo
