#include <arpa/inet.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "contract.h"
#include "environment.h"
#include "platform/forwarding_platform.h"
#include "platform/linux/descriptor.h"
#include "private_display.h"
#include "test_process.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

// A script's end that does not come.
const std::string kLive = "exec tail -f /dev/null";

// A script that the platform starts as a tool; it and what it started end with the object.
class Tool {
 public:
  Tool(Platform& platform, const TemporaryFolder& folder, const std::string& text)
      : platform_(platform) {
    static int count = 0;
    const std::string path =
        folder.WriteFile("tool " + std::to_string(++count), "#!/bin/sh\n" + text + "\n");
    fs::permissions(path, fs::perms(0755));
    process_ = platform.StartProcess(path, {}, StartWindow::kNormal);
  }
  ~Tool() {
    ::kill(-process_, SIGKILL);
    EXPECT_TRUE(ComesTrue([&] { return !platform_.ProcessLives(process_); }));
  }
  Tool(const Tool&) = delete;
  Tool& operator=(const Tool&) = delete;

  int Process() const { return process_; }
  void BringToFront() const { platform_.BringToFront(process_); }

 private:
  Platform& platform_;
  int process_ = 0;
};

// Tools with windows, and somebody else's window above them.
class WindowsOnADisplay {
 public:
  // The text of a script that shows a window and waits for its end.
  static std::string Showing(const std::string& file, const std::string& owner = "") {
    return "'" TEST_WINDOW "' '" + file + "' " + owner;
  }

  // Opens a window of nobody's, which comes to the front.
  std::uint32_t ShowOther() {
    const std::string file = folder_ / "other " + std::to_string(others_.size());
    others_.emplace_back(std::vector<std::string>{TEST_WINDOW, file});
    const std::uint32_t window = WindowIn(file);
    WaitForFront(window);
    return window;
  }

  void WaitForFront(std::uint32_t window) {
    EXPECT_TRUE(ComesTrue([&] { return display.Active() == window && display.Top() == window; }))
        << std::hex << window << " is wanted, " << display.Active() << " is active, "
        << display.Top() << " on top";
  }

  PrivateDisplay display;

 private:
  const EnvironmentVariable name_{"DISPLAY", display.Name()};
  const TemporaryFolder folder_;
  std::vector<TestProcess> others_;
};

class WindowActivation : public ::testing::Test, protected WindowsOnADisplay {
 protected:
  // Waits until the window manager has done everything that it was asked for up to now: it takes
  // one request after the other, and this one shows.
  void WaitForWindowManager() {
    const std::string file = folder / "marker " + std::to_string(++markers_);
    const Tool marker(platform, folder, "exec " + Showing(file));
    const std::uint32_t window = WindowIn(file);
    WaitForFront(window);
    const std::uint32_t other = ShowOther();
    marker.BringToFront();
    WaitForFront(window);
    ASSERT_NE(other, window);
  }

  Platform& platform = SystemPlatform();
  const TemporaryFolder folder;

 private:
  int markers_ = 0;
};

// Through every platform that does not merely note the request.
TEST_F(WindowActivation, AToolsWindowComesToTheFront) {
  ForwardingPlatform forwarding(platform);
  for (Platform* way : {&platform, static_cast<Platform*>(&forwarding)}) {
    const std::string file = folder / "window " + (way == &platform ? "1" : "2");
    const Tool tool(*way, folder, "exec " + Showing(file));
    const std::uint32_t window = WindowIn(file);
    WaitForFront(window);
    for (int i = 0; i < 2; ++i) {
      ShowOther();
      tool.BringToFront();
      WaitForFront(window);
    }
  }
}

TEST_P(PlatformContract, WithoutADisplayNoWindowComesToTheFront) {
  const EnvironmentVariable none("DISPLAY", std::nullopt);
  platform.BringToFront(::getpid());
  for (const char* name : {"", ":", "nonsense", ":64999", "no.such.host.invalid:0"}) {
    const EnvironmentVariable display("DISPLAY", name);
    platform.BringToFront(::getpid());
    platform.BringToFront(0);
    platform.BringToFront(-1);
  }
}

TEST_F(WindowActivation, MinimisedWindowsComeBack) {
  const Tool tool(platform, folder, "exec " + Showing(folder / "window"));
  const std::uint32_t window = WindowIn(folder / "window");
  WaitForFront(window);
  ShowOther();
  display.Minimise(window);
  ASSERT_TRUE(ComesTrue([&] { return display.IsMinimised(window); }));
  tool.BringToFront();
  WaitForFront(window);
  EXPECT_FALSE(display.IsMinimised(window));
}

TEST_F(WindowActivation, TheWindowOfAProgramThatAScriptStartsIsTheScripts) {
  const Tool tool(platform, folder, Showing(folder / "window") + "\nexit");
  const std::uint32_t window = WindowIn(folder / "window");
  ShowOther();
  tool.BringToFront();
  WaitForFront(window);
}

TEST_F(WindowActivation, TheWindowOfAProgramWhoseStarterHasEndedIsTheScripts) {
  const Tool tool(platform, folder, "(" + Showing(folder / "window") + " &)\n" + kLive);
  const std::uint32_t window = WindowIn(folder / "window");
  ShowOther();
  tool.BringToFront();
  WaitForFront(window);
}

TEST_F(WindowActivation, TheWindowOfAProgramInASessionOfItsOwnIsTheScripts) {
  const Tool tool(platform, folder, "setsid -w " + Showing(folder / "window") + "\nexit");
  const std::uint32_t window = WindowIn(folder / "window");
  ShowOther();
  tool.BringToFront();
  WaitForFront(window);
}

TEST_F(WindowActivation, OfSeveralWindowsTheTopmostComes) {
  const Tool tool(platform, folder, Showing(folder / "first", "$$") + " & " + kLive);
  const std::uint32_t first = WindowIn(folder / "first");
  WaitForFront(first);
  const TestProcess another({TEST_WINDOW, folder / "second", std::to_string(tool.Process())});
  const std::uint32_t second = WindowIn(folder / "second");
  WaitForFront(second);
  ShowOther();
  tool.BringToFront();
  WaitForFront(second);
}

TEST_F(WindowActivation, AToolsOwnWindowsComeBeforeThoseOfTheProgramsThatItStarts) {
  const Tool tool(platform, folder,
                  "(until [ -e '" + folder / "own" + "' ]; do :; done\nexec " +
                      Showing(folder / "started") + ") &\nexec " + Showing(folder / "own"));
  const std::uint32_t own = WindowIn(folder / "own");
  const std::uint32_t started = WindowIn(folder / "started");
  WaitForFront(started);
  ShowOther();
  tool.BringToFront();
  WaitForFront(own);
}

TEST_F(WindowActivation, AUserInOneOfAToolsWindowsIsNotTakenToAnother) {
  const Tool tool(platform, folder,
                  "(until [ -e '" + folder / "own" + "' ]; do :; done\nexec " +
                      Showing(folder / "started") + ") &\nexec " + Showing(folder / "own"));
  const std::uint32_t own = WindowIn(folder / "own");
  const std::uint32_t started = WindowIn(folder / "started");
  WaitForFront(started);
  tool.BringToFront();
  WaitForWindowManager();
  EXPECT_TRUE(display.IsAbove(started, own));
}

TEST_F(WindowActivation, WindowsOfOtherProcessesStayWhereTheyAre) {
  const Tool tool(platform, folder, kLive);
  const std::string process = std::to_string(tool.Process());
  const TestProcess nobodys({TEST_WINDOW, folder / "nobodys", "-"});
  const TestProcess ours({TEST_WINDOW, folder / "ours", std::to_string(::getpid())});
  const TestProcess remote({TEST_WINDOW, folder / "remote", process, "elsewhere.example"});
  const std::uint32_t windows[] = {WindowIn(folder / "nobodys"), WindowIn(folder / "ours"),
                                   WindowIn(folder / "remote")};
  const std::uint32_t other = ShowOther();
  tool.BringToFront();
  WaitForWindowManager();
  for (const std::uint32_t window : windows) EXPECT_TRUE(display.IsAbove(other, window));
}

TEST_F(WindowActivation, NothingComesOfAToolThatHasEndedAsAZombieOrAltogether) {
  const int process = platform.StartProcess("/bin/true", {}, StartWindow::kNormal);
  siginfo_t ended;
  ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(process), &ended, WEXITED | WNOWAIT), 0);
  platform.BringToFront(process);
  ASSERT_FALSE(platform.ProcessLives(process));

  const TestProcess claiming({TEST_WINDOW, folder / "claiming", std::to_string(process)});
  const std::uint32_t window = WindowIn(folder / "claiming");
  WaitForFront(window);
  const std::uint32_t other = ShowOther();
  platform.BringToFront(process);
  WaitForWindowManager();
  EXPECT_TRUE(display.IsAbove(other, window));
}

TEST_F(WindowActivation, AWindowMayNameThisHostWithOrWithoutItsDomain) {
  char host[256] = "";
  ASSERT_EQ(::gethostname(host, sizeof host), 0);
  for (const std::string& name : {std::string(host), host + std::string(".example")}) {
    const std::string file = folder / name;
    const Tool tool(platform, folder, "exec " + Showing(file, "$$ " + name));
    const std::uint32_t window = WindowIn(file);
    WaitForFront(window);
    ShowOther();
    tool.BringToFront();
    WaitForFront(window);
  }
}

TEST_F(WindowActivation, NothingHappensWhenTheWindowManagerOrTheDisplayHasGone) {
  const Tool tool(platform, folder, "exec " + Showing(folder / "window"));
  WaitForFront(WindowIn(folder / "window"));
  display.EndWindowManager();
  tool.BringToFront();
  display.End();
  tool.BringToFront();
}

// Listens where an X11 server of some number would, and answers nothing.
class SilentServer {
 public:
  SilentServer() : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    constexpr int kFirstPort = 6000;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
    do {
      ++number_;
      address.sin_port = ::htons(static_cast<std::uint16_t>(kFirstPort + number_));
    } while (::bind(socket_.Get(), reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 &&
             number_ < kMostNumber);
    if (::listen(socket_.Get(), 8) != 0) throw std::runtime_error("cannot listen");
  }
  std::string Name() const { return "127.0.0.1:" + std::to_string(number_); }

 private:
  static constexpr int kMostNumber = 1000;
  Descriptor socket_;
  int number_ = 100;
};

TEST_F(WindowActivation, ADisplayThatDoesNotAnswerHoldsNobodyUpForLong) {
  const Tool tool(platform, folder, "exec " + Showing(folder / "window"));
  const std::uint32_t window = WindowIn(folder / "window");
  ShowOther();
  {
    const SilentServer server;
    const EnvironmentVariable name("DISPLAY", server.Name());
    tool.BringToFront();
    tool.BringToFront();
  }
  // The one who waited for an answer knows now that none will come.
  EXPECT_TRUE(ComesTrue([&] {
    tool.BringToFront();
    return display.Active() == window;
  }));
}

TEST_F(WindowActivation, NothingStaysOpen) {
  const auto countOpen = [] {
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
  };
  const Tool tool(platform, folder, "exec " + Showing(folder / "window"));
  WaitForFront(WindowIn(folder / "window"));
  const auto before = countOpen();
  for (int i = 0; i < 5; ++i) tool.BringToFront();
  EXPECT_TRUE(ComesTrue([&] { return countOpen() == before; }));
}

}  // namespace
}  // namespace tarvo::test
