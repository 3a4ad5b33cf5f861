// Prints what a process of its own reaches of the desktop that the environment names.

#include <cstdio>
#include <cstdlib>

#include "platform/linux/file_manager.h"
#include "platform/linux/x11_display.h"
#include "platform/platform.h"

int main() {
  for (const tarvo::SystemFinding& finding : tarvo::SystemPlatform().Findings()) {
    if (finding.topic == "Session bus" || finding.topic == "Display") {
      std::printf("%s\n", finding.sentence.c_str());
    }
  }
  const bool isAsked =
      tarvo::OpenInFileManager("file:///etc") || tarvo::ShowInFileManager("file:///etc/passwd");
  constexpr xcb_window_t kNoWindow = 1;
  tarvo::X11Display display(std::getenv("DISPLAY"));
  display.SendToWindowManager(kNoWindow, kNoWindow, "WM_NAME", {});
  const auto owners = display.Owners({kNoWindow}).size();
  const auto numbers = display.Numbers(kNoWindow, "WM_NAME").size();
  std::printf("%s, %zu owners, %zu numbers\n", isAsked ? "asked" : "nobody asked", owners, numbers);
}
