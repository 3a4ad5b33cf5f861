#pragma once

#include <string>
#include <vector>

#include "platform/linux/file_manager.h"
#include "platform/linux/wine.h"
#include "platform/platform.h"

namespace tarvo {

// What of the desktop and of wine is there, and where documents are kept.
struct DesktopFacts {
  FileManager fileManager = FileManager::kNoBus;
  bool hasOpener = false;     // "xdg-open"
  bool hasX11Library = true;  // libxcb
  std::string x11Display;     // $DISPLAY
  bool x11DisplayAnswers = false;
  std::string waylandDisplay;  // $WAYLAND_DISPLAY
  WineSupport wine;
  std::string documents;         // the folder in which settings are shared; "" when there is none
  bool documentsChosen = false;  // by $TARVO_COMMON_DOCUMENTS
  std::string wineDocuments;     // where programs for Windows have their common documents
  bool documentsShared = false;  // both are one folder, by whatever paths
};

// `startFolder` as in CommonDocumentsFolder.
DesktopFacts LookAtDesktop(const std::string& startFolder);

// The facts for a technician: what follows, and what to do about what is missing.
std::vector<SystemFinding> FindingsOf(const DesktopFacts& facts);

// Both together; see Platform::Findings.
std::vector<SystemFinding> LinuxFindings(const std::string& startFolder);

}  // namespace tarvo
