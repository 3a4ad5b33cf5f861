#include "platform/linux/findings.h"

#include <gtest/gtest.h>

#include "environment.h"
#include "private_bus.h"
#include "support/temporary_folder.h"

namespace tarvo::test {
namespace {

// A system that has everything.
DesktopFacts Complete() {
  DesktopFacts facts;
  facts.fileManager = FileManager::kRunning;
  facts.hasOpener = true;
  facts.x11Display = ":0";
  facts.x11DisplayAnswers = true;
  facts.wine = {true, true, true, "/usr/bin/wine"};
  facts.documents = facts.wineDocuments = "/srv/documents";
  facts.documentsShared = true;
  return facts;
}

SystemFinding Finding(const std::vector<SystemFinding>& findings, std::string_view topic) {
  for (const SystemFinding& finding : findings) {
    if (finding.topic == topic) return finding;
  }
  return {std::string(topic), false, "there is no such finding"};
}

// "good" or "bad" and the sentence.
std::string Said(const DesktopFacts& facts, std::string_view topic) {
  const SystemFinding finding = Finding(FindingsOf(facts), topic);
  return (finding.isGood ? "good: " : "bad: ") + finding.sentence;
}

TEST(Findings, AreAllGoodWhereNothingIsMissing) {
  const std::vector<SystemFinding> findings = FindingsOf(Complete());
  EXPECT_EQ(findings.size(), 6U);
  for (const SystemFinding& finding : findings) {
    EXPECT_TRUE(finding.isGood) << finding.topic << ": " << finding.sentence;
  }
}

TEST(Findings, SayWhatFollowsFromAMissingFileManager) {
  DesktopFacts facts = Complete();
  facts.fileManager = FileManager::kStartable;
  EXPECT_EQ(Said(facts, "File manager"),
            "good: The session bus starts a file manager when it is needed; it opens folders and "
            "shows files selected.");
  for (const FileManager missing : {FileManager::kNone, FileManager::kNoBus}) {
    facts.fileManager = missing;
    facts.hasOpener = true;
    EXPECT_EQ(Said(facts, "File manager"),
              "bad: No file manager answers on the session bus; folders are opened with xdg-open, "
              "and files are not selected there.");
    facts.hasOpener = false;
    EXPECT_EQ(Said(facts, "File manager"),
              "bad: No file manager answers on the session bus, and xdg-open is not installed: "
              "folders cannot be opened; install a file manager or the package xdg-utils.");
  }
}

TEST(Findings, TellAMissingBusFromAMissingFileManager) {
  DesktopFacts facts = Complete();
  facts.fileManager = FileManager::kNone;
  EXPECT_EQ(Said(facts, "Session bus"), "good: The session bus answers.");
  facts.fileManager = FileManager::kNoBus;
  EXPECT_EQ(Said(facts, "Session bus").substr(0, 31), "bad: No session bus answers, so");
}

TEST(Findings, SayWhichDisplayIsMissing) {
  DesktopFacts facts = Complete();
  EXPECT_EQ(Said(facts, "Display"), "good: The X11 display :0 answers.");
  facts.x11DisplayAnswers = false;
  EXPECT_EQ(Said(facts, "Display").substr(0, 43), "bad: The X11 display :0 does not answer: wi");
  facts.x11Display = "";
  EXPECT_EQ(Said(facts, "Display").substr(0, 27), "bad: There is no display: w");
  facts.waylandDisplay = "wayland-0";
  EXPECT_EQ(Said(facts, "Display").substr(0, 34), "bad: There is a Wayland display, b");
}

TEST(Findings, SayWhichProgramsForWindowsCannotBeStarted) {
  DesktopFacts facts = Complete();
  constexpr const char* kTopic = "Programs for Windows";
  EXPECT_EQ(Said(facts, kTopic), "good: wine runs 32-bit and 64-bit programs (/usr/bin/wine).");
  facts.wine.runs32Bit = false;
  EXPECT_EQ(Said(facts, kTopic),
            "bad: wine runs 64-bit programs only (/usr/bin/wine): 32-bit tools cannot be started; "
            "install the 32-bit part of wine (the package wine32).");
  facts.wine.runs64Bit = false;
  EXPECT_EQ(Said(facts, kTopic).substr(0, 63),
            "bad: wine is installed (/usr/bin/wine), but runs no programs he");
  facts.wine.runs32Bit = true;
  EXPECT_EQ(Said(facts, kTopic).substr(0, 54),
            "bad: wine runs 32-bit programs only (/usr/bin/wine): 6");
  facts.wine = {};
  EXPECT_EQ(Said(facts, kTopic).substr(0, 31), "bad: wine is not installed: too");
}

TEST(Findings, SayWhichToolsForWindowsShareTheDocuments) {
  DesktopFacts facts = Complete();
  constexpr const char* kTopic = "Documents of programs for Windows";
  EXPECT_EQ(Said(facts, kTopic),
            "good: Tools that are programs for Windows use the same documents folder "
            "(/srv/documents).");
  facts.documentsShared = false;
  facts.wineDocuments = "/windows/documents";
  EXPECT_EQ(Said(facts, kTopic),
            "bad: Tools that are programs for Windows use another documents folder "
            "(/windows/documents) than this program (/srv/documents), so what they record is not "
            "found; set TARVO_COMMON_DOCUMENTS to their folder.");
  facts.documentsChosen = true;
  EXPECT_EQ(Said(facts, kTopic),
            "bad: Tools that are programs for Windows use the same documents folder "
            "(/srv/documents) if they read TARVO_COMMON_DOCUMENTS; what others record in "
            "/windows/documents is not found, unless the variable is set to that folder.");
  facts.documents = "";
  EXPECT_EQ(Said(facts, kTopic), "bad: there is no such finding");
  facts = Complete();
  facts.wine = {};
  EXPECT_EQ(Said(facts, kTopic), "bad: there is no such finding");
}

TEST(Findings, AreOneSentenceEach) {
  for (const bool isThere : {true, false}) {
    const DesktopFacts facts = isThere ? Complete() : DesktopFacts();
    for (const SystemFinding& finding : FindingsOf(facts)) {
      EXPECT_EQ(finding.sentence.find('\n'), std::string::npos);
      EXPECT_EQ(finding.sentence.find('.'), finding.sentence.size() - 1) << finding.sentence;
      EXPECT_EQ(finding.isGood, isThere) << finding.topic;
    }
  }
}

TEST(Findings, AreThoseOfThisSystem) {
  const TemporaryFolder folder;
  const PrivateBus session;
  EnvironmentVariable bus("DBUS_SESSION_BUS_ADDRESS", session.Address());
  const EnvironmentVariable programs("PATH", folder / "bin");
  const EnvironmentVariable x11("DISPLAY", ":no display");
  EnvironmentVariable wayland("WAYLAND_DISPLAY", std::nullopt);
  EXPECT_EQ(Finding(SystemPlatform().Findings(), "Session bus").sentence,
            "The session bus answers.");
  session.MakeStartable("org.freedesktop.FileManager1", "/bin/false");
  DesktopFacts facts = LookAtDesktop(folder / "");
  EXPECT_EQ(facts.fileManager, FileManager::kStartable);
  EXPECT_FALSE(facts.hasOpener);
  EXPECT_FALSE(facts.wine.isInstalled);
  EXPECT_EQ(facts.x11Display, ":no display");
  EXPECT_FALSE(facts.x11DisplayAnswers);
  EXPECT_EQ(facts.waylandDisplay, "");
  bus.Set("garbage");
  wayland.Set("wayland-7");
  for (const char* name : {"bin/xdg-open", "bin/wine"}) {
    std::filesystem::permissions(folder.WriteFile(name), std::filesystem::perms(0755));
  }
  facts = LookAtDesktop(folder / "");
  EXPECT_EQ(facts.fileManager, FileManager::kNoBus);
  EXPECT_TRUE(facts.hasOpener);
  EXPECT_EQ(facts.wine.command, folder / "bin/wine");
  EXPECT_EQ(facts.waylandDisplay, "wayland-7");
}

class DocumentsWithWine : public ::testing::Test {
 protected:
  DesktopFacts Facts() const { return LookAtDesktop(folder / "start"); }

  const TemporaryFolder folder;
  const EnvironmentVariable bus{"DBUS_SESSION_BUS_ADDRESS", "garbage"};
  const EnvironmentVariable display{"DISPLAY", std::nullopt};
  const EnvironmentVariable home{"HOME", folder / "home"};
  EnvironmentVariable prefix{"WINEPREFIX", std::nullopt};
  EnvironmentVariable chosen{"TARVO_COMMON_DOCUMENTS", std::nullopt};
};

TEST_F(DocumentsWithWine, AreThoseOfTheUsersWindowsFolderAndOfTheVariable) {
  const std::string theirs = "/drive_c/users/Public/Documents";
  EXPECT_EQ(Facts().wineDocuments, folder / "home/.wine" + theirs);
  EXPECT_FALSE(Facts().documentsChosen);
  EXPECT_FALSE(Facts().documentsShared);
  prefix.Set(folder / "windows");
  EXPECT_EQ(Facts().wineDocuments, folder / "windows" + theirs);
  chosen.Set(folder / "shared");
  EXPECT_EQ(Facts().documents, folder / "shared");
  EXPECT_TRUE(Facts().documentsChosen);
  EXPECT_FALSE(Facts().documentsShared);
}

TEST_F(DocumentsWithWine, AreSharedByWhateverPathTheyAreReached) {
  namespace fs = std::filesystem;
  chosen.Set(folder / "home/.wine/drive_c/users/Public/Documents");
  EXPECT_TRUE(Facts().documentsShared) << "before wine makes its folder";
  chosen.Set(folder / "shared");
  folder.MakeFolder("shared");
  folder.MakeFolder("home/.wine/drive_c/users/Public");
  EXPECT_FALSE(Facts().documentsShared);
  fs::create_symlink(folder / "shared", folder / "home/.wine/drive_c/users/Public/Documents");
  EXPECT_TRUE(Facts().documentsShared);
  chosen.Set("../shared");
  EXPECT_TRUE(Facts().documentsShared);
}

}  // namespace
}  // namespace tarvo::test
