#include "platform/linux/processes.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "base/runtime_error.h"
#include "platform/linux/errno_error.h"
#include "platform/linux/long_path.h"
#include "platform/linux/wine.h"

namespace tarvo {
namespace {

// What a program is for. One that may be executed but not read is none for Windows, which would
// have to be read. A program is missing, too, where its folder is.
WindowsProgram KindOf(std::string_view program) {
  try {
    return WindowsProgramKind(program);
  } catch (const RuntimeError& error) {
    if (error.Number() == kPermissionDenied) return WindowsProgram::kNone;
    if (error.Number() == kPathNotFound) {
      throw RuntimeError(kFileNotFound,
                         StandardDescription(kFileNotFound) + ": " + std::string(program));
    }
    throw;
  }
}

std::string InWords(WindowsProgram kind) {
  switch (kind) {
    case WindowsProgram::k16Bit:
      return "a program for DOS or 16-bit Windows";
    case WindowsProgram::k32Bit:
      return "a 32-bit program for Windows";
    case WindowsProgram::k64Bit:
      return "a 64-bit program for Windows";
    default:
      return "a program for Windows on another processor";
  }
}

// The program that runs programs for Windows of this kind. A wine that lacks what such a program
// needs would fail without a word, so it is not even started.
std::string InterpreterOf(std::string_view program, WindowsProgram kind) {
  WineSupport wine = FindWine();
  if (wine.Runs(kind)) return std::move(wine.command);
  const std::string subject = std::string(program) + " is " + InWords(kind);
  if (kind == WindowsProgram::kOtherProcessor) throw RuntimeError(kInvalidProcedureCall, subject);
  if (!wine.isInstalled) throw RuntimeError(kFileNotFound, subject + ", and wine is not installed");
  const std::string run = wine.runs64Bit   ? "only 64-bit ones"
                          : wine.runs32Bit ? "only 32-bit ones"
                                           : "none";
  throw RuntimeError(kFileNotFound, subject + ", and wine runs " + run + " here");
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
  explicit ChildFiles(std::string_view workingFolder)
      : folder_(workingFolder.empty() ? Descriptor() : Reach(workingFolder)) {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawn_file_actions_addopen(&actions_, 0, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_addopen(&actions_, 1, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addopen(&actions_, 2, "/dev/null", O_WRONLY, 0);
    if (folder_.Get() >= 0) ::posix_spawn_file_actions_addfchdir_np(&actions_, folder_.Get());
  }
  ~ChildFiles() { ::posix_spawn_file_actions_destroy(&actions_); }
  ChildFiles(const ChildFiles&) = delete;
  ChildFiles& operator=(const ChildFiles&) = delete;
  const posix_spawn_file_actions_t* Get() const { return &actions_; }

 private:
  static Descriptor Reach(std::string_view path) {
    const ReachedPath reached = ReachPath(path);
    Descriptor folder(
        ::openat(reached.Base(), reached.rest.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (folder.Get() < 0) throw FolderError(errno, path);
    return folder;
  }

  Descriptor folder_;
  posix_spawn_file_actions_t actions_;
};

// The error of a program that could not be executed. It is there, since it has been looked at: what
// is missing is what its first line names, or the loader that it was linked for.
RuntimeError StartError(int code, std::string_view program) {
  const std::string name(program);
  if (code == ENOEXEC) return RuntimeError(kInvalidProcedureCall, name + " is not a program");
  if (code == ENOENT) {
    return RuntimeError(kFileNotFound, StandardDescription(kFileNotFound) + ": what runs " + name);
  }
  return ErrorFromErrno(code, name);
}

// The children that nobody has found ended yet. Only these are looked at, never whatever process
// happens to have an identifier: the system gives an identifier away again once its process is
// forgotten.
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
  words.reserve(arguments.size() + 2);
  const WindowsProgram kind = KindOf(program);
  if (kind != WindowsProgram::kNone) words.push_back(InterpreterOf(program, kind));
  words.emplace_back(program);
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);

  const SpawnAttributes attributes;
  const ChildFiles files(workingFolder);
  pid_t child = 0;
  const int code =
      ::posix_spawn(&child, pointers[0], files.Get(), attributes.Get(), pointers.data(), environ);
  if (code != 0) throw StartError(code, program);
  LivingChildren().push_back(child);
  return child;
}

bool LinuxProcessLives(int process) {
  ForgetEndedChildren();
  const std::vector<pid_t>& children = LivingChildren();
  return std::find(children.begin(), children.end(), process) != children.end();
}

}  // namespace tarvo
