#include <linux/sched.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string>

#include "contract.h"
#include "test_process.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

// A script's end that does not come.
constexpr const char* kLive = "exec tail -f /dev/null";

// Starts a script as a tool.
int Start(Platform& platform, const TemporaryFolder& folder, const std::string& text) {
  static int count = 0;
  const std::string path =
      folder.WriteFile("tool " + std::to_string(++count), "#!/bin/sh\n" + text + "\n");
  fs::permissions(path, fs::perms(0755));
  return platform.StartProcess(path, {}, StartWindow::kNormal);
}

bool Ends(Platform& platform, int process) {
  return ComesTrue([&] { return !platform.ProcessLives(process); });
}

void End(Platform& platform, int process) {
  ::kill(process, SIGKILL);
  EXPECT_TRUE(Ends(platform, process));
}

bool IsInTheSystemsTable(int process) { return fs::exists("/proc/" + std::to_string(process)); }

// Waits until a child of this process has ended, and leaves it in the system's table.
void WaitForZombie(int process) {
  siginfo_t ended;
  ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(process), &ended, WEXITED | WNOWAIT), 0);
}

TEST_P(PlatformContract, AProcessLivesFromItsStartOn) {
  const int process = Start(platform, folder, kLive);
  EXPECT_TRUE(platform.ProcessLives(process));
  EXPECT_TRUE(platform.ProcessLives(process)) << "asking changes nothing";
  End(platform, process);
}

TEST_P(PlatformContract, AProcessLivesUntilItEndsByItself) {
  const int process =
      Start(platform, folder, "until [ -e '" + folder / "end" + "' ]; do sleep 0; done");
  EXPECT_TRUE(platform.ProcessLives(process));
  folder.WriteFile("end");
  EXPECT_TRUE(Ends(platform, process));
}

TEST_P(PlatformContract, AProcessLivesUntilItIsKilled) {
  for (const int signal : {SIGKILL, SIGTERM, SIGSEGV}) {
    const int process = Start(platform, folder, kLive);
    ::kill(process, signal);
    EXPECT_TRUE(Ends(platform, process)) << ::strsignal(signal);
    EXPECT_FALSE(platform.ProcessLives(process)) << "once ended, it stays so";
  }
}

TEST_P(PlatformContract, AProcessThatIsStoppedLives) {
  const int process = Start(platform, folder, kLive);
  ::kill(process, SIGSTOP);
  siginfo_t stopped;
  ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(process), &stopped, WSTOPPED | WNOWAIT), 0);
  EXPECT_TRUE(platform.ProcessLives(process));
  End(platform, process);
}

TEST_P(PlatformContract, AProcessDoesNotLiveOnInAProgramThatItStarted) {
  const std::string file = folder / "started";
  const int process = Start(
      platform, folder,
      "tail -f /dev/null &\necho $! > '" + file + ".part'; mv '" + file + ".part' '" + file + "'");
  ASSERT_TRUE(ComesTrue([&] { return fs::exists(file); }));
  const int started = std::stoi(ReadFileAt(file));
  EXPECT_TRUE(Ends(platform, process));
  EXPECT_EQ(::kill(started, 0), 0) << "it lives on";
  EXPECT_FALSE(platform.ProcessLives(started)) << "it is not the platform's";
  ::kill(started, SIGKILL);
}

TEST_P(PlatformContract, AZombieDoesNotLiveAndIsForgotten) {
  const int process = Start(platform, folder, "exit 3");
  WaitForZombie(process);
  ASSERT_TRUE(IsInTheSystemsTable(process));
  EXPECT_FALSE(platform.ProcessLives(process));
  EXPECT_FALSE(IsInTheSystemsTable(process));
}

TEST_P(PlatformContract, ZombiesThatNobodyAsksForAreForgottenAtTheNextStart) {
  const int process = Start(platform, folder, "exit");
  WaitForZombie(process);
  const int next = Start(platform, folder, kLive);
  EXPECT_FALSE(IsInTheSystemsTable(process));
  End(platform, next);
}

TEST_P(PlatformContract, ProcessesLiveEachForItself) {
  const int first = Start(platform, folder, kLive);
  const int second = Start(platform, folder, kLive);
  ASSERT_NE(first, second);
  End(platform, first);
  EXPECT_TRUE(platform.ProcessLives(second));
  End(platform, second);
}

TEST_P(PlatformContract, ProcessesThatThePlatformDidNotStartDoNotLiveForIt) {
  for (const int process :
       {0, -1, 1, static_cast<int>(::getpid()), static_cast<int>(::getppid())}) {
    EXPECT_FALSE(platform.ProcessLives(process)) << process;
  }
}

// A child with an identifier that nobody has; below 0 when the system does not allow that.
pid_t ForkAs(pid_t identifier) {
  clone_args arguments{};
  arguments.exit_signal = SIGCHLD;
  arguments.set_tid = reinterpret_cast<std::uint64_t>(&identifier);
  arguments.set_tid_size = 1;
  const auto child = static_cast<pid_t>(::syscall(SYS_clone3, &arguments, sizeof arguments));
  if (child == 0) {
    for (;;) ::pause();
  }
  return child;
}

TEST_P(PlatformContract, AskingWhetherAProcessLivesTakesNoChildFromOthers) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(7);
  WaitForZombie(child);
  EXPECT_FALSE(platform.ProcessLives(child));
  End(platform, Start(platform, folder, kLive));
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child) << "it is still there for who started it";
  EXPECT_EQ(WEXITSTATUS(status), 7);
}

// The system gives identifiers away again.
TEST_P(PlatformContract, AnEndedProcessDoesNotLiveAgainWhenAnotherGetsItsIdentifier) {
  const int process = Start(platform, folder, kLive);
  End(platform, process);
  const pid_t other = ForkAs(process);
  if (other < 0 && (errno == EPERM || errno == ENOSYS || errno == EEXIST)) {
    GTEST_SKIP() << "no process can be given that identifier: " << std::strerror(errno);
  }
  ASSERT_EQ(other, process);
  EXPECT_FALSE(platform.ProcessLives(process));
  ::kill(other, SIGKILL);
  EXPECT_EQ(::waitpid(other, nullptr, 0), other);
}

}  // namespace
}  // namespace tarvo::test
