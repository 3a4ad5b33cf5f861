#pragma once

#include <string>
#include <vector>

#include "platform/linux/file_manager.h"
#include "platform/linux/wine.h"
#include "platform/platform.h"

namespace tarvo {

// What of the desktop and of wine is there.
struct DesktopFacts {
  FileManager fileManager = FileManager::kNoBus;
  bool hasOpener = false;  // "xdg-open"
  std::string x11Display;  // $DISPLAY
  bool x11DisplayAnswers = false;
  std::string waylandDisplay;  // $WAYLAND_DISPLAY
  WineSupport wine;
};

DesktopFacts LookAtDesktop();

// The facts for a technician: what follows, and what to do about what is missing.
std::vector<SystemFinding> FindingsOf(const DesktopFacts& facts);

// Both together; see Platform::Findings.
std::vector<SystemFinding> LinuxFindings();

}  // namespace tarvo
