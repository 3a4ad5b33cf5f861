#include "platform/linux/processes.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>

#include "base/runtime_error.h"
#include "platform/linux/linux_file.h"
#include "platform/linux/long_path.h"

namespace tarvo {
namespace {

constexpr const char* kWindowsInterpreter = "wine";

// "MZ" begins every program for Windows.
bool IsForWindows(std::string_view program) {
  return OpenLinuxFile(program, OpenFor::kReading)->ReadAt(0, 2) == "MZ";
}

class SpawnAttributes {
 public:
  // A session of its own, so that a terminal's signals do not reach the child, with no signal
  // blocked or ignored that this process blocks or ignores.
  SpawnAttributes() {
    ::posix_spawnattr_init(&attributes_);
    sigset_t none;
    sigset_t all;
    ::sigemptyset(&none);
    ::sigfillset(&all);
    ::posix_spawnattr_setsigmask(&attributes_, &none);
    ::posix_spawnattr_setsigdefault(&attributes_, &all);
    ::posix_spawnattr_setflags(&attributes_,
                               POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  ~SpawnAttributes() { ::posix_spawnattr_destroy(&attributes_); }
  SpawnAttributes(const SpawnAttributes&) = delete;
  SpawnAttributes& operator=(const SpawnAttributes&) = delete;
  const posix_spawnattr_t* Get() const { return &attributes_; }

 private:
  posix_spawnattr_t attributes_;
};

// The child neither reads this program's input nor holds its output open, which a pipe would wait
// for. It starts in a working folder of its own, if one is given.
class ChildFiles {
 public:
  explicit ChildFiles(std::string_view workingFolder) {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawn_file_actions_addopen(&actions_, 0, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_addopen(&actions_, 1, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addopen(&actions_, 2, "/dev/null", O_WRONLY, 0);
    if (!workingFolder.empty()) ChangeFolder(workingFolder);
  }
  ~ChildFiles() { ::posix_spawn_file_actions_destroy(&actions_); }
  ChildFiles(const ChildFiles&) = delete;
  ChildFiles& operator=(const ChildFiles&) = delete;
  const posix_spawn_file_actions_t* Get() const { return &actions_; }

 private:
  void ChangeFolder(std::string_view path) {
    const ReachedPath reached = ReachPath(path);
    folder_ = Descriptor(
        ::openat(reached.Base(), reached.rest.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (folder_.Get() < 0) throw FolderError(errno, path);
    ::posix_spawn_file_actions_addfchdir_np(&actions_, folder_.Get());
  }

  Descriptor folder_;
  posix_spawn_file_actions_t actions_;
};

// The error of a program that could not be executed.
RuntimeError StartError(int code, std::string_view program, std::string_view interpreter) {
  if (code == ENOEXEC) {
    return RuntimeError(kInvalidProcedureCall, std::string(program) + " is not a program");
  }
  if (code == ENOENT && !interpreter.empty()) {
    return RuntimeError(kFileNotFound, std::string(program) + " is a program for Windows, and " +
                                           std::string(interpreter) + " is not installed");
  }
  return RuntimeError::FromErrno(code, std::string(program));
}

// The children that nobody has found ended yet.
std::vector<pid_t>& LivingChildren() {
  static std::vector<pid_t> children;
  return children;
}

// Children that have ended stay in the system's table until somebody asks for them.
void ForgetEndedChildren() {
  std::erase_if(LivingChildren(),
                [](pid_t child) { return ::waitpid(child, nullptr, WNOHANG) != 0; });
}

}  // namespace

int StartLinuxProcess(std::string_view program, const std::vector<std::string>& arguments,
                      std::string_view workingFolder) {
  ForgetEndedChildren();

  std::vector<std::string> words;
  if (IsForWindows(program)) words.emplace_back(kWindowsInterpreter);
  const std::string interpreter = words.empty() ? "" : words.front();
  words.emplace_back(program);
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);

  const SpawnAttributes attributes;
  const ChildFiles files(workingFolder);
  pid_t child = 0;
  const int code = interpreter.empty() ? ::posix_spawn(&child, pointers[0], files.Get(),
                                                       attributes.Get(), pointers.data(), environ)
                                       : ::posix_spawnp(&child, pointers[0], files.Get(),
                                                        attributes.Get(), pointers.data(), environ);
  if (code != 0) throw StartError(code, program, interpreter);
  LivingChildren().push_back(child);
  return child;
}

bool LinuxProcessLives(int process) {
  ForgetEndedChildren();
  const std::vector<pid_t>& children = LivingChildren();
  return std::find(children.begin(), children.end(), process) != children.end();
}

}  // namespace tarvo
