// Prints what a process of its own reaches of the desktop that the environment names.

#include <cstdio>
#include <cstdlib>

#include "platform/linux/file_manager.h"
#include "platform/linux/x11_display.h"

int main() {
  const bool hasBus = tarvo::FindFileManager() != tarvo::FileManager::kNoBus;
  const bool isAsked =
      tarvo::OpenInFileManager("file:///etc") || tarvo::ShowInFileManager("file:///etc/passwd");
  constexpr xcb_window_t kWindow = 1;
  tarvo::X11Display display(std::getenv("DISPLAY"));
  display.SendToWindowManager(kWindow, kWindow, "WM_NAME", {});
  const bool hasDisplay = !display.Roots().empty() || !display.Owners({kWindow}).empty() ||
                          !display.Numbers(kWindow, "WM_NAME").empty();
  std::printf("%s, %s, %s", hasBus ? "bus" : "no bus", isAsked ? "asked" : "nobody asked",
              hasDisplay ? "display" : "no display");
}
