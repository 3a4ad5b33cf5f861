#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>

#include "contract.h"
#include "environment.h"
#include "mime_folders.h"
#include "platform/linux/file_manager.h"
#include "platform/linux/file_uri.h"
#include "platform/platform.h"
#include "private_bus.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kFileManagerName = "org.freedesktop.FileManager1";

// A desktop without anything but an "xdg-open" that records what it is given, and the programs that
// scripts need.
class Desktop : public ::testing::Test, protected MimeFolders {
 protected:
  void SetUp() override {
    platform.ChangeCurrentFolder(home.Path());
    home.MakeFolder("runtime");
    Program("bin/xdg-open", Recording("opened", "$1"));
  }

  // A script below the test's folder.
  std::string Program(std::string_view name, std::string_view text) const {
    std::string path = home.WriteFile(name, "#!/bin/sh\n" + std::string(text) + "\n");
    fs::permissions(path, fs::perms(0755));
    return path;
  }
  // Script text that makes a file with a content in one step.
  std::string Recording(const std::string& file, const std::string& content) const {
    return "cd '" + home.Path() + "' && printf '%s' \"" + content + "\" > " + file +
           ".part && mv " + file + ".part " + file;
  }
  // What a script has recorded, taken away from there.
  std::string Recorded(const std::string& file) const {
    if (!ComesTrue([&] { return fs::exists(home / file); })) return "nothing within the deadline";
    std::string text = home.ReadFile(file);
    fs::remove(home / file);
    return text;
  }
  std::string Opened() const { return Recorded("opened"); }
  void RemoveOpener() const { fs::remove(home / "bin/xdg-open"); }

  Platform& platform = SystemPlatform();
  EnvironmentVariable programs{"PATH", home / "bin:/usr/bin:/bin"};
  EnvironmentVariable bus{"DBUS_SESSION_BUS_ADDRESS", std::nullopt};
  EnvironmentVariable runtime{"XDG_RUNTIME_DIR", home / "runtime"};
};

// The same with a session bus.
class DesktopWithBus : public Desktop {
 protected:
  void SetUp() override {
    Desktop::SetUp();
    bus.Set(session->Address());
  }
  std::string Command(const std::string& mode = "answer") const {
    return std::string(STAND_IN_FILE_MANAGER) + " " + (home / "calls") + " " + mode;
  }
  void StartFileManager(const std::string& mode = "answer") {
    manager = TestProcess({STAND_IN_FILE_MANAGER, home / "calls", mode});
    ASSERT_TRUE(ComesTrue([&] { return session->HasOwner(kFileManagerName); }));
  }
  // The calls so far, once there are so many.
  std::string Calls(std::ptrdiff_t count) const {
    std::string text;
    ComesTrue([&] {
      text = fs::exists(home / "calls") ? home.ReadFile("calls") : "";
      return std::count(text.begin(), text.end(), '\n') >= count;
    });
    return text;
  }

  std::unique_ptr<PrivateBus> session = std::make_unique<PrivateBus>();
  TestProcess manager;
};

TEST(FileUris, EncodeEveryByteThatIsNotPlain) {
  EXPECT_EQ(FileUri("/a/B-9._~"), "file:///a/B-9._~");
  EXPECT_EQ(FileUri("/a b/#1%20?"), "file:///a%20b/%231%2520%3F");
  EXPECT_EQ(FileUri("/\"'&;,\n"), "file:///%22%27%26%3B%2C%0A");
  EXPECT_EQ(FileUri("/\xc3\xa4\xff"), "file:///%C3%A4%FF");
}

TEST_F(DesktopWithBus, OpensFoldersInTheFileManager) {
  StartFileManager();
  platform.OpenFolder(home.MakeFolder("Data"));
  EXPECT_EQ(Calls(1), "ShowFolders file://" + home.Path() + "/Data\n");
}

TEST_F(DesktopWithBus, ShowsFilesSelectedInTheFileManager) {
  StartFileManager();
  platform.ShowFile(home.WriteFile("Data/1.csv"));
  platform.ShowFile(home.WriteFile("Data/2.csv"));
  const std::string start = "ShowItems file://" + home.Path();
  EXPECT_EQ(Calls(2), start + "/Data/1.csv\n" + start + "/Data/2.csv\n");
}

TEST_F(DesktopWithBus, TellsTheFileManagerNamesOfAnyBytes) {
  StartFileManager();
  home.MakeFolder("a b 'c' \"d\" #1 100%");
  platform.OpenFolder("a b 'c' \"d\" #1 100%");
  platform.ShowFile(home.WriteFile("\xc3\xa4\xff.csv"));
  EXPECT_EQ(Calls(2), "ShowFolders file://" + home.Path() +
                          "/a%20b%20%27c%27%20%22d%22%20%231%20100%25\nShowItems file://" +
                          home.Path() + "/%C3%A4%FF.csv\n");
}

TEST_F(DesktopWithBus, StartsRelativePathsAtTheCurrentFolder) {
  StartFileManager();
  home.MakeFolder("inner/Data");
  platform.ChangeCurrentFolder(home / "inner");
  platform.OpenFolder("Data");
  EXPECT_EQ(Calls(1), "ShowFolders file://" + home.Path() + "/inner/Data\n");
}

// The file manager comes up only after the calls have returned.
TEST_F(DesktopWithBus, DoesNotWaitForAFileManagerThatTheBusMustStart) {
  const std::string gate = home / "gate";
  ASSERT_EQ(::mkfifo(gate.c_str(), 0600), 0);
  Program("start", "read word < '" + gate + "'\nexec " + Command());
  session->MakeStartable(kFileManagerName, home / "start");
  EXPECT_EQ(FindFileManager(), FileManager::kStartable);
  platform.OpenFolder(home.Path());
  platform.ShowFile(home.WriteFile("1.csv"));
  EXPECT_FALSE(session->HasOwner(kFileManagerName));
  std::ofstream(gate) << "go\n";
  EXPECT_EQ(Calls(2),
            "ShowFolders file://" + home.Path() + "\nShowItems file://" + home.Path() + "/1.csv\n");
  EXPECT_EQ(FindFileManager(), FileManager::kRunning);
}

TEST_F(DesktopWithBus, DoesNotWaitForAFileManagerThatNeverAnswers) {
  StartFileManager("silent");
  platform.OpenFolder(home.Path());
  platform.OpenFolder(home.Path());
  const std::string line = "ShowFolders file://" + home.Path() + "\n";
  EXPECT_EQ(Calls(2), line + line);
}

TEST_F(DesktopWithBus, WithoutAFileManagerOpensFoldersByXdgOpen) {
  EXPECT_EQ(FindFileManager(), FileManager::kNone);
  home.MakeFolder("Data #1 100%");
  platform.OpenFolder("Data #1 100%");
  EXPECT_EQ(Opened(), home / "Data #1 100%");
  platform.ShowFile("Data #1 100%/1.csv");
  EXPECT_EQ(Opened(), home / "Data #1 100%");
}

TEST_F(DesktopWithBus, GivesUpAFileManagerThatCannotBeStarted) {
  session->MakeStartable(kFileManagerName, "/bin/false");
  platform.OpenFolder(home.Path());
  EXPECT_TRUE(ComesTrue([&] { return FindFileManager() == FileManager::kNone; }));
  platform.OpenFolder(home.Path());
  EXPECT_EQ(Opened(), home.Path());
  StartFileManager();
  platform.OpenFolder(home.Path());
  EXPECT_EQ(Calls(1), "ShowFolders file://" + home.Path() + "\n") << "one that is there is asked";
}

TEST_F(DesktopWithBus, FindsAnotherBusAfterItsBusWentAway) {
  StartFileManager();
  platform.OpenFolder(home.Path());
  EXPECT_EQ(Calls(1), "ShowFolders file://" + home.Path() + "\n");
  session->End();
  platform.OpenFolder(home.Path());
  EXPECT_EQ(Opened(), home.Path());
  EXPECT_EQ(FindFileManager(), FileManager::kNoBus);
  manager.End();
  session = std::make_unique<PrivateBus>();
  bus.Set(session->Address());
  fs::remove(home / "calls");
  StartFileManager();
  platform.OpenFolder(home.Path());
  EXPECT_EQ(Calls(1), "ShowFolders file://" + home.Path() + "\n");
}

TEST_F(Desktop, WithoutASessionBusOpensFoldersByXdgOpen) {
  for (const std::optional<std::string>& address :
       {std::optional<std::string>(), std::optional<std::string>(""),
        std::optional<std::string>("garbage"), std::optional<std::string>("unix:path=relative"),
        std::optional<std::string>("unix:path=" + (home / "nobody")),
        std::optional<std::string>("tcp:host=127.0.0.1,port=1")}) {
    bus.Set(address);
    EXPECT_EQ(FindFileManager(), FileManager::kNoBus) << address.value_or("none");
    platform.OpenFolder(home.Path());
    EXPECT_EQ(Opened(), home.Path()) << address.value_or("none");
  }
}

TEST_F(Desktop, GivesUpASessionBusThatNeverSpeaks) {
  const int listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string socketPath = home / "mute";
  socketPath.copy(address.sun_path, sizeof address.sun_path - 1);
  ASSERT_EQ(::bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(::listen(listener, 8), 0);
  bus.Set("unix:path=" + socketPath);
  platform.OpenFolder(home.Path());
  EXPECT_EQ(Opened(), home.Path());
  ::close(listener);
}

// The description of the RuntimeError that a step throws, after its number.
std::string FailureOf(const std::function<void()>& step) {
  try {
    step();
  } catch (const RuntimeError& error) {
    return std::to_string(error.Number()) + " " + error.Description();
  }
  return "none";
}

TEST_F(Desktop, SaysWhatIsMissingWhenNothingCanOpenAFolder) {
  RemoveOpener();
  programs.Set(home / "bin");
  const std::string failure =
      "53 No file manager answers on the session bus, and xdg-open is not installed: " +
      home.Path() + " cannot be opened";
  EXPECT_EQ(FailureOf([&] { platform.OpenFolder(home.Path()); }), failure);
  EXPECT_EQ(FailureOf([&] { platform.ShowFile(home / "1.csv"); }), failure);
}

TEST_F(Desktop, NeedsTheFolder) {
  home.WriteFile("file");
  for (const char* name : {"missing", "missing/too", "file", "file/below"}) {
    EXPECT_EQ(ErrorOf([&] { platform.OpenFolder(name); }), kPathNotFound) << name;
  }
  EXPECT_EQ(ErrorOf([&] { platform.ShowFile("missing/1.csv"); }), kPathNotFound);
}

TEST_F(Desktop, RunsProgramsByTheVerbInTheirWorkingFolder) {
  Program("Win32Device/PDATarvo.exe", "folder=$(pwd)\n" + Recording("ran", "$folder|$0"));
  platform.OpenByVerb("Win32Device/PDATarvo.exe", "Win32Device/");
  EXPECT_EQ(Recorded("ran"), (home / "Win32Device") + "|" + (home / "Win32Device/PDATarvo.exe"));
  EXPECT_EQ(platform.CurrentFolder(), home.Path());
}

TEST_F(Desktop, RunsProgramsForWindowsByTheVerb) {
  Program("bin/wine", "folder=$(pwd)\n" + Recording("ran", "$folder|$1"));
  home.MakeFolder("work");
  const std::string tool = home.WriteFile("PDATarvo.exe", "MZ and more");
  platform.OpenByVerb(tool, home / "work");
  EXPECT_EQ(Recorded("ran"), (home / "work") + "|" + tool);
}

TEST_F(Desktop, OpensAnythingElseByTheVerbWithXdgOpen) {
  const std::string document = home.WriteFile("-a document #1.txt", "plain text");
  fs::permissions(document, fs::perms(0755));
  platform.OpenByVerb("-a document #1.txt", home.Path());
  EXPECT_EQ(Opened(), document) << "a document that may be executed is still none to run";
  platform.OpenByVerb(home.MakeFolder("Data"), home.Path());
  EXPECT_EQ(Opened(), home / "Data");
  platform.OpenByVerb(home.WriteFile("empty"), home.Path());
  EXPECT_EQ(Opened(), home / "empty");
}

TEST_F(Desktop, OpensByTheVerbOnlyWhatIsThere) {
  const std::string tool = Program("tool", "exit");
  EXPECT_EQ(ErrorOf([&] { platform.OpenByVerb("missing", home.Path()); }), kFileNotFound);
  EXPECT_EQ(ErrorOf([&] { platform.OpenByVerb(tool, "missing"); }), kPathNotFound);
  fs::permissions(tool, fs::perms(0644));
  EXPECT_EQ(ErrorOf([&] { platform.OpenByVerb(tool, home.Path()); }), kPermissionDenied);
  RemoveOpener();
  programs.Set(home / "bin");
  EXPECT_EQ(FailureOf([&] { platform.OpenByVerb(home.WriteFile("a.txt"), home.Path()); }),
            "53 xdg-open is not installed: " + (home / "a.txt") + " cannot be opened");
}

TEST_F(Desktop, OpensClassicHelpWithTheApplicationForIt) {
  Install("viewer.desktop", "viewer %f");
  Configure("[Default Applications]\napplication/winhlp=viewer.desktop\n");
  home.WriteFile("TARVO.HLP", "?_");
  platform.OpenClassicHelp("TARVO.HLP", HelpCommand::kContents, "");
  EXPECT_EQ(Opened(), home / "TARVO.HLP");
}

TEST_F(Desktop, OpensClassicHelpWithTheViewerOfWine) {
  Program("bin/wine", Recording("ran", "$1|$2|$3"));
  home.WriteFile("TARVO.HLP", "?_");
  platform.OpenClassicHelp("TARVO.HLP", HelpCommand::kPartialKey, "");
  EXPECT_EQ(Recorded("ran"), "start|/unix|" + (home / "TARVO.HLP"));
}

TEST_F(Desktop, SaysThatThereIsNoViewerOfClassicHelp) {
  programs.Set(home / "bin");
  home.WriteFile("TARVO.HLP", "?_");
  const auto open = [&] { platform.OpenClassicHelp("TARVO.HLP", HelpCommand::kContents, ""); };
  EXPECT_EQ(FailureOf(open),
            "53 " + (home / "TARVO.HLP") +
                " cannot be opened: there is no viewer for help files in the classic format, and "
                "wine, which has one, is not installed");
  fs::remove(home / "TARVO.HLP");
  EXPECT_EQ(ErrorOf(open), kFileNotFound);
}

}  // namespace
}  // namespace tarvo::test
