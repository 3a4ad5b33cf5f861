#include "platform/linux/findings.h"

#include <filesystem>

#include "platform/linux/special_folders.h"
#include "platform/linux/x11_display.h"
#include "platform/linux/xcb.h"
#include "platform/linux/xdg_folders.h"

namespace tarvo {
namespace {

SystemFinding SessionBusOf(const DesktopFacts& facts) {
  constexpr const char* kTopic = "Session bus";
  if (facts.fileManager == FileManager::kNoLibrary) {
    return {kTopic, false,
            "libsystemd is missing or damaged, so no file manager can be asked; install the "
            "package libsystemd0."};
  }
  if (facts.fileManager != FileManager::kNoBus) return {kTopic, true, "The session bus answers."};
  return {kTopic, false,
          "No session bus answers, so no file manager can be asked; start the program from a "
          "desktop session, or set DBUS_SESSION_BUS_ADDRESS."};
}

SystemFinding FileManagerOf(const DesktopFacts& facts) {
  constexpr const char* kTopic = "File manager";
  if (facts.fileManager == FileManager::kRunning) {
    return {kTopic, true, "A file manager runs; it opens folders and shows files selected."};
  }
  if (facts.fileManager == FileManager::kStartable) {
    return {kTopic, true,
            "The session bus starts a file manager when it is needed; it opens folders and shows "
            "files selected."};
  }
  if (facts.hasOpener) {
    return {kTopic, false,
            "No file manager answers on the session bus; folders are opened with xdg-open, and "
            "files are not selected there."};
  }
  return {kTopic, false,
          "No file manager answers on the session bus, and xdg-open is not installed: folders "
          "cannot be opened; install a file manager or the package xdg-utils."};
}

SystemFinding OpenerOf(const DesktopFacts& facts) {
  if (facts.hasOpener) return {"xdg-open", true, "xdg-open is installed."};
  return {"xdg-open", false,
          "xdg-open is not installed, so documents cannot be opened; install the package "
          "xdg-utils."};
}

SystemFinding DisplayOf(const DesktopFacts& facts) {
  constexpr const char* kTopic = "Display";
  if (!facts.hasX11Library) {
    return {kTopic, false,
            "libxcb is missing or damaged: windows cannot be shown; install the package libxcb1."};
  }
  if (facts.x11DisplayAnswers) {
    return {kTopic, true, "The X11 display " + facts.x11Display + " answers."};
  }
  if (!facts.waylandDisplay.empty()) {
    return {kTopic, false,
            "There is a Wayland display, but no X11 display beside it: the windows of tools are "
            "not brought to the front; install and start Xwayland."};
  }
  if (!facts.x11Display.empty()) {
    return {kTopic, false,
            "The X11 display " + facts.x11Display +
                " does not answer: windows cannot be shown; see whether DISPLAY is right and "
                "access is allowed."};
  }
  return {kTopic, false,
          "There is no display: windows cannot be shown; start the program from a desktop "
          "session."};
}

SystemFinding WineOf(const DesktopFacts& facts) {
  constexpr const char* kTopic = "Programs for Windows";
  const WineSupport& wine = facts.wine;
  if (!wine.isInstalled) {
    return {kTopic, false,
            "wine is not installed: tools that are programs for Windows cannot be started; install "
            "wine, with its 32-bit part for 32-bit tools."};
  }
  if (wine.runs32Bit && wine.runs64Bit) {
    return {kTopic, true, "wine runs 32-bit and 64-bit programs (" + wine.command + ")."};
  }
  if (wine.runs64Bit) {
    return {kTopic, false,
            "wine runs 64-bit programs only (" + wine.command +
                "): 32-bit tools cannot be started; install the 32-bit part of wine (the package "
                "wine32)."};
  }
  if (wine.runs32Bit) {
    return {kTopic, false,
            "wine runs 32-bit programs only (" + wine.command +
                "): 64-bit tools cannot be started; install the 64-bit part of wine (the package "
                "wine64), and see that its Windows folder is not one of 32-bit Windows."};
  }
  return {kTopic, false,
          "wine is installed (" + wine.command +
              "), but runs no programs here: its Windows folder is one of 32-bit Windows, and the "
              "32-bit part is missing; install it (the package wine32)."};
}

// Which tools find their common documents where Tarvo has its own: all when the folders are one,
// else those that read the variable, as the settings library does.
SystemFinding SharedDocumentsOf(const DesktopFacts& facts) {
  constexpr const char* kTopic = "Documents of programs for Windows";
  const std::string& theirs = facts.wineDocuments;
  if (facts.documentsShared) {
    return {kTopic, true,
            "Tools that are programs for Windows use the same documents folder (" +
                facts.documents + ")."};
  }
  if (facts.documentsChosen) {
    return {kTopic, false,
            "Tools that are programs for Windows use the same documents folder (" +
                facts.documents + ") if they read TARVO_COMMON_DOCUMENTS; what others record in " +
                theirs + " is not found, unless the variable is set to that folder."};
  }
  return {kTopic, false,
          "Tools that are programs for Windows use another documents folder (" + theirs +
              ") than this program (" + facts.documents +
              "), so what they record is not found; set TARVO_COMMON_DOCUMENTS to their folder."};
}

bool IsOneFolder(const std::string& one, const std::string& other) {
  std::error_code error;
  const auto first = std::filesystem::weakly_canonical(one, error);
  if (error) return false;
  const auto second = std::filesystem::weakly_canonical(other, error);
  return !error && first == second;
}

}  // namespace

DesktopFacts LookAtDesktop(const std::string& startFolder) {
  DesktopFacts facts;
  facts.fileManager = FindFileManager();
  facts.hasOpener = !FindProgram("xdg-open").empty();
  facts.hasX11Library = TheXcb().library.IsWhole();
  facts.x11Display = EnvironmentValue("DISPLAY");
  facts.x11DisplayAnswers =
      !facts.x11Display.empty() && !X11Display(facts.x11Display).Roots().empty();
  facts.waylandDisplay = EnvironmentValue("WAYLAND_DISPLAY");
  facts.wine = FindWine();
  facts.documentsChosen = !EnvironmentValue("TARVO_COMMON_DOCUMENTS").empty();
  facts.documents = CommonDocumentsFolder(startFolder).value_or(UserDocumentsFolder().value_or(""));
  facts.wineDocuments = WineCommonDocuments();
  facts.documentsShared = IsOneFolder(facts.documents, facts.wineDocuments);
  return facts;
}

std::vector<SystemFinding> FindingsOf(const DesktopFacts& facts) {
  std::vector<SystemFinding> findings{SessionBusOf(facts), FileManagerOf(facts), OpenerOf(facts),
                                      DisplayOf(facts), WineOf(facts)};
  if (facts.wine.isInstalled && !facts.documents.empty()) {
    findings.push_back(SharedDocumentsOf(facts));
  }
  return findings;
}

std::vector<SystemFinding> LinuxFindings(const std::string& startFolder) {
  return FindingsOf(LookAtDesktop(startFolder));
}

}  // namespace tarvo
