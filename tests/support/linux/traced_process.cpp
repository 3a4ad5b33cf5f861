#include "support/traced_process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <optional>

namespace tarvo::test {
namespace {

struct ChangingCall {
  long number;
  const char* name;
};

constexpr ChangingCall kChangingCalls[] = {
    {SYS_write, "write"},         {SYS_pwrite64, "pwrite"},   {SYS_ftruncate, "ftruncate"},
    {SYS_mkdirat, "mkdirat"},     {SYS_unlinkat, "unlinkat"}, {SYS_renameat, "renameat"},
    {SYS_renameat2, "renameat2"}, {SYS_linkat, "linkat"},     {SYS_symlinkat, "symlinkat"},
    {SYS_fchmod, "fchmod"},       {SYS_fchmodat, "fchmodat"}, {SYS_fallocate, "fallocate"},
    {SYS_writev, "writev"},       {SYS_pwritev, "pwritev"},   {SYS_pwritev2, "pwritev2"},
#ifdef SYS_chmod
    {SYS_chmod, "chmod"},         {SYS_mkdir, "mkdir"},       {SYS_rmdir, "rmdir"},
    {SYS_unlink, "unlink"},       {SYS_rename, "rename"},     {SYS_link, "link"},
    {SYS_symlink, "symlink"},
#endif
};

// The name of a call that changes files; null for others. Opening does so where it may make the
// file.
const char* NameOf(const __ptrace_syscall_info& call) {
  if (call.entry.nr == SYS_openat && (call.entry.args[2] & O_CREAT) != 0) return "openat";
  for (const ChangingCall& changing : kChangingCalls) {
    if (static_cast<long>(call.entry.nr) == changing.number) return changing.name;
  }
  return nullptr;
}

// A process that stops at the beginning and the end of each of its calls.
class TracedProcess {
 public:
  TracedProcess(const std::function<void()>& prepare, const std::function<void()>& work)
      : child_(::fork()) {
    if (child_ != 0) return;
    try {
      prepare();
      if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) ::_exit(EXIT_FAILURE);
      ::raise(SIGSTOP);
      work();
    } catch (...) {
      ::_exit(EXIT_FAILURE);
    }
    ::_exit(EXIT_SUCCESS);
  }
  ~TracedProcess() {
    if (isEnded_) return;
    ::kill(child_, SIGKILL);
    while (!isEnded_) Wait();
  }
  TracedProcess(const TracedProcess&) = delete;
  TracedProcess& operator=(const TracedProcess&) = delete;

  // Waits for the stop before the work.
  bool Begin() {
    Wait();
    if (isEnded_) return false;
    return ::ptrace(PTRACE_SETOPTIONS, child_, nullptr,
                    PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL) == 0;
  }

  // Goes on to the next beginning or end of a call; nothing when the process has ended.
  std::optional<__ptrace_syscall_info> Next() {
    int signal = 0;
    while (::ptrace(PTRACE_SYSCALL, child_, nullptr, signal) == 0) {
      Wait();
      if (isEnded_) return std::nullopt;
      if (WSTOPSIG(status_) == (SIGTRAP | 0x80)) {
        __ptrace_syscall_info info{};
        ::ptrace(PTRACE_GET_SYSCALL_INFO, child_, sizeof info, &info);
        return info;
      }
      signal = WSTOPSIG(status_);
    }
    return std::nullopt;
  }

  bool HasEndedWell() const {
    return isEnded_ && WIFEXITED(status_) && WEXITSTATUS(status_) == EXIT_SUCCESS;
  }

 private:
  void Wait() {
    while (::waitpid(child_, &status_, 0) < 0 && errno == EINTR) continue;
    isEnded_ = WIFEXITED(status_) || WIFSIGNALED(status_);
  }

  pid_t child_;
  int status_ = 0;
  bool isEnded_ = false;
};

}  // namespace

std::string KillAtSystemCall(const std::function<void()>& prepare,
                             const std::function<void()>& work, int number, CallMoment moment) {
  TracedProcess process(prepare, work);
  if (!process.Begin()) {
    ADD_FAILURE() << "the process cannot be traced";
    return {};
  }
  int calls = 0;
  while (const auto call = process.Next()) {
    if (call->op != PTRACE_SYSCALL_INFO_ENTRY) continue;
    const char* name = NameOf(*call);
    if (!name || ++calls < number) continue;
    if (moment == CallMoment::kAfter) process.Next();
    return name;
  }
  EXPECT_TRUE(process.HasEndedWell()) << "it has thrown";
  return {};
}

}  // namespace tarvo::test
