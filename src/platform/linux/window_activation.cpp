#include "platform/linux/window_activation.h"

#include <signal.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/linux/process_table.h"
#include "platform/linux/x11_display.h"

namespace tarvo {
namespace {

// Far more than a display takes, and little enough to wait for one that answers no more.
constexpr std::chrono::seconds kPatience{1};

// The bottom of the stack comes first. Minimised windows are in it, too.
constexpr const char* kWindowsBottomFirst = "_NET_CLIENT_LIST_STACKING";
constexpr const char* kWindowsOldestFirst = "_NET_CLIENT_LIST";

std::vector<xcb_window_t> WindowsOf(X11Display& display, xcb_window_t root) {
  std::vector<xcb_window_t> windows = display.Numbers(root, kWindowsBottomFirst);
  if (windows.empty()) windows = display.Numbers(root, kWindowsOldestFirst);
  return windows;
}

// The window to bring to the front: the active one when it is the tool's already, so that the user
// is not taken from one of its windows to another; else the topmost of the process's own; else the
// topmost of those that it started.
std::optional<xcb_window_t> WindowOf(X11Display& display, xcb_window_t root, int process) {
  std::optional<xcb_window_t> own;
  std::optional<xcb_window_t> started;
  const std::vector<xcb_window_t> active = display.Numbers(root, "_NET_ACTIVE_WINDOW");
  for (const X11WindowOwner& window : display.Owners(WindowsOf(display, root))) {
    if (!window.isOfThisHost || !BelongsToTool(static_cast<int>(window.process), process)) continue;
    if (!active.empty() && active[0] == window.window) return window.window;
    (static_cast<int>(window.process) == process ? own : started) = window.window;
  }
  return own ? own : started;
}

void Activate(const std::string& displayName, int process) {
  // Writing to a display that has gone must not end the program.
  sigset_t all;
  ::sigfillset(&all);
  ::pthread_sigmask(SIG_SETMASK, &all, nullptr);

  X11Display display(displayName);
  for (const xcb_window_t root : display.Roots()) {
    if (const auto window = WindowOf(display, root, process)) {
      // The source of the request is a pager, which acts for the user: a request of an application
      // would be refused while the user works in another one's window.
      constexpr std::uint32_t kPager = 2;
      constexpr std::uint32_t kNow = 0;
      display.SendToWindowManager(root, *window, "_NET_ACTIVE_WINDOW", {kPager, kNow});
    }
  }
}

// A display that answers no more would hold whoever talks to it for ever, the connecting included.
// So another thread talks, and one that gets no answer is left to itself; no second one joins it.
void ActivateWithPatience(const std::string& display, int process) {
  static std::future<void> talk;
  if (talk.valid() && talk.wait_for(std::chrono::seconds(0)) != std::future_status::ready) return;
  std::packaged_task<void()> task([display, process] { Activate(display, process); });
  talk = task.get_future();
  std::thread(std::move(task)).detach();
  talk.wait_for(kPatience);
}

}  // namespace

void BringX11WindowToFront(int process) {
  const char* display = std::getenv("DISPLAY");
  if (!display || !*display) return;
  try {
    ActivateWithPatience(display, process);
  } catch (const std::exception&) {
    // No memory or no thread is to be had: the window stays where it is.
  }
}

}  // namespace tarvo
