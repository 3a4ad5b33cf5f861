#include "platform/windows/window_activation.h"

#include <windows.h>

#include <exception>
#include <vector>

#include "platform/windows/process_tree.h"

namespace tarvo {
namespace {

struct OwnedWindow {
  HWND window;
  DWORD process;
};

// Windows that a user could choose from: visible ones that belong to no other window.
BOOL CALLBACK TakeWindow(HWND window, LPARAM list) {
  if (!::IsWindowVisible(window) || ::GetWindow(window, GW_OWNER)) return TRUE;
  if ((::GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_TOOLWINDOW) != 0) return TRUE;
  DWORD process = 0;
  ::GetWindowThreadProcessId(window, &process);
  try {
    reinterpret_cast<std::vector<OwnedWindow>*>(list)->push_back({window, process});
  } catch (const std::exception&) {
    return FALSE;  // no memory; those seen so far have to do
  }
  return TRUE;
}

// The topmost comes first.
std::vector<OwnedWindow> TopWindows() {
  std::vector<OwnedWindow> windows;
  ::EnumWindows(TakeWindow, reinterpret_cast<LPARAM>(&windows));
  return windows;
}

DWORD ProcessInFront() {
  DWORD process = 0;
  const HWND front = ::GetForegroundWindow();
  if (front) ::GetWindowThreadProcessId(front, &process);
  return process;
}

// The topmost window of the process itself; else of those that it started.
HWND WindowOf(const ProcessTree& tree, DWORD process) {
  HWND started = nullptr;
  for (const OwnedWindow& window : TopWindows()) {
    if (window.process == process) return window.window;
    if (!started && tree.BelongsTo(window.process, process)) started = window.window;
  }
  return started;
}

void Activate(DWORD process) {
  const ProcessTree tree;
  // The user is not taken from one of the tool's windows to another.
  const DWORD inFront = ProcessInFront();
  if (inFront != 0 && tree.BelongsTo(inFront, process)) return;
  const HWND window = WindowOf(tree, process);
  if (!window) return;
  // Without waiting for a tool that does not answer.
  if (::IsIconic(window)) ::ShowWindowAsync(window, SW_RESTORE);
  // A dialog of the window, if it has one open, is what can take the focus.
  ::SetForegroundWindow(::GetLastActivePopup(window));
}

}  // namespace

void BringWindowsWindowToFront(int process) {
  if (process <= 0) return;
  try {
    Activate(static_cast<DWORD>(process));
  } catch (const std::exception&) {
    // No memory is to be had: the window stays where it is.
  }
}

}  // namespace tarvo
