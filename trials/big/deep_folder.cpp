#include "deep_folder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace tarvo::test {
namespace {

constexpr int kFolder = O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

}  // namespace

DeepFolder::DeepFolder(std::string top, int levels, const std::string& name,
                       const std::string& file)
    : top_(std::move(top)), levels_(levels), name_(name), file_(file) {
  int folder = ::open(top_.c_str(), kFolder);
  for (int level = 0; level < levels && folder >= 0; ++level) {
    ::mkdirat(folder, name.c_str(), 0777);
    const int below = ::openat(folder, name.c_str(), kFolder);
    ::close(folder);
    folder = below;
  }
  const int made = ::openat(folder, file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
  if (made < 0) throw std::runtime_error("cannot make folders below " + top_);
  ::close(made);
  ::close(folder);
}

// By another program, so that nothing depends on how many folders a walk may keep open.
DeepFolder::~DeepFolder() {
  const std::string call = "rm -rf '" + top_ + "/" + name_ + "'";
  if (std::system(call.c_str()) != 0) std::abort();
}

bool DeepFolder::IsWhole() const {
  const int folder = Deepest();
  struct stat status {};
  const bool isThere = folder >= 0 && ::fstatat(folder, file_.c_str(), &status, 0) == 0;
  if (folder >= 0) ::close(folder);
  return isThere;
}

int DeepFolder::Deepest() const {
  int folder = ::open(top_.c_str(), kFolder);
  for (int level = 0; level < levels_ && folder >= 0; ++level) {
    const int below = ::openat(folder, name_.c_str(), kFolder);
    ::close(folder);
    folder = below;
  }
  return folder;
}

}  // namespace tarvo::test
