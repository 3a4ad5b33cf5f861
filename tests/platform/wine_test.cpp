#include "platform/linux/wine.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "base/runtime_error.h"
#include "environment.h"
#include "platform/linux/xdg_folders.h"
#include "platform/platform.h"
#include "support/temporary_folder.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

class Programs : public ::testing::Test {
 protected:
  std::string Program(const std::string& name) const {
    const std::string path = folder.WriteFile(name, "#!/bin/sh\n");
    fs::permissions(path, fs::perms(0755));
    return path;
  }

  const TemporaryFolder folder;
  EnvironmentVariable folders{"PATH", folder / "bin"};
};

TEST_F(Programs, AreFoundInTheFoldersOfThePathInItsOrder) {
  folders.Set(folder / "first:" + folder / "second");
  const std::string second = Program("second/tool");
  EXPECT_EQ(FindProgram("tool"), second);
  const std::string first = Program("first/tool");
  EXPECT_EQ(FindProgram("tool"), first);
  EXPECT_EQ(FindProgram("Tool"), "");
}

TEST_F(Programs, AreFilesThatMayBeExecuted) {
  folder.MakeFolder("bin/folder");
  folder.WriteFile("bin/document");
  fs::create_symlink("nowhere", folder / "bin/broken");
  for (const char* name : {"folder", "document", "broken", "missing"}) {
    EXPECT_EQ(FindProgram(name), "") << name;
  }
  Program("elsewhere/tool");
  fs::create_symlink("../elsewhere/tool", folder / "bin/link");
  EXPECT_EQ(FindProgram("link"), folder / "bin/link");
}

TEST_F(Programs, AreNotLookedForInTheCurrentFolder) {
  Platform& platform = SystemPlatform();
  const std::string before = platform.CurrentFolder();
  Program("tool");
  platform.ChangeCurrentFolder(folder.Path());
  for (const char* value : {"", ":", ".", "::/nowhere:", "./", "../"}) {
    folders.Set(value);
    EXPECT_EQ(FindProgram("tool"), "") << value;
  }
  platform.ChangeCurrentFolder(before);
}

TEST_F(Programs, AreInTheUsualFoldersWithoutAPath) {
  folders.Set(std::nullopt);
  EXPECT_EQ(fs::path(FindProgram("env")).filename(), "env");
}

// The beginning of a program for Windows for a processor.
std::string WindowsHeaders(std::uint16_t processor) {
  constexpr char kNewHeaderAt = 0x48;
  std::string text = "MZ" + std::string(58, '\0') + kNewHeaderAt + std::string(0x48 - 61, '\0');
  text += std::string("PE\0\0", 4);
  text += static_cast<char>(processor & 0xff);
  text += static_cast<char>(processor >> 8);
  return text;
}

constexpr std::uint16_t kI386 = 0x014c;
constexpr std::uint16_t kX86_64 = 0x8664;
constexpr std::uint16_t kArm64 = 0xaa64;

TEST(WindowsPrograms, AreOfTheKindThatTheirHeadersTell) {
  const TemporaryFolder folder;
  const auto kind = [&](const std::string& text) {
    return WindowsProgramKind(folder.WriteFile("tool.exe", text));
  };
  EXPECT_EQ(kind(WindowsHeaders(kI386)), WindowsProgram::k32Bit);
  EXPECT_EQ(kind(WindowsHeaders(kX86_64)), WindowsProgram::k64Bit);
  EXPECT_EQ(kind(WindowsHeaders(kArm64)), WindowsProgram::kOtherProcessor);
  EXPECT_EQ(kind(""), WindowsProgram::kNone);
  EXPECT_EQ(kind("M"), WindowsProgram::kNone);
  EXPECT_EQ(kind("#!/bin/sh\nMZ"), WindowsProgram::kNone);
  EXPECT_EQ(kind("MZ"), WindowsProgram::k16Bit);
  EXPECT_EQ(kind("MZ" + std::string(62, '\0')), WindowsProgram::k16Bit);
  EXPECT_EQ(kind("MZ" + std::string(62, '\xff')), WindowsProgram::k16Bit);
  std::string cut = WindowsHeaders(kI386);
  cut.pop_back();
  EXPECT_EQ(kind(cut), WindowsProgram::k16Bit);
  std::string other = WindowsHeaders(kI386);
  other[0x48] = 'N';
  EXPECT_EQ(kind(other), WindowsProgram::k16Bit);
}

// An installation of wine of the test's own, and a user whose Windows folder does not exist yet.
class Wine : public Programs {
 protected:
  void Install(const std::string& command, const std::string& modules = "") const {
    Program(command);
    if (!modules.empty()) folder.WriteFile(modules + "/ntdll.dll");
  }
  void MakeWindowsFolder(const std::string& arch) const {
    folder.WriteFile("home/.wine/system.reg",
                     "WINE REGISTRY Version 2\n\n#arch=" + arch + "\n\n[a]");
  }
  // What runs, as "32", "64", "both", "none" or "missing".
  static std::string Runs() {
    const WineSupport wine = FindWine();
    if (!wine.isInstalled) return "missing" + wine.command;
    if (wine.runs32Bit && wine.runs64Bit) return "both";
    if (wine.runs32Bit) return "32";
    return wine.runs64Bit ? "64" : "none";
  }

  static constexpr const char* k32BitModules = "lib/wine/i386-windows";
  static constexpr const char* k64BitModules = "lib/x86_64-linux-gnu/wine/x86_64-windows";

  EnvironmentVariable home{"HOME", folder / "home"};
  EnvironmentVariable prefix{"WINEPREFIX", std::nullopt};
  EnvironmentVariable wanted{"WINEARCH", std::nullopt};
};

TEST_F(Wine, IsMissingWhereThereIsNoCommand) { EXPECT_EQ(Runs(), "missing"); }

TEST_F(Wine, IsTheCommandBeforeTheOneFor64BitBeforeTheOneBesideTheLibraries) {
  Install("lib/wine/wine64");
  folder.MakeFolder("bin");
  EXPECT_EQ(FindWine().command, folder / "lib/wine/wine64");
  Install("bin/wine64");
  EXPECT_EQ(FindWine().command, folder / "bin/wine64");
  folders.Set(folder / "bin:" + folder / "other");
  Install("other/wine");
  EXPECT_EQ(FindWine().command, folder / "other/wine");
}

TEST_F(Wine, RunsWhatItsModulesAreFor) {
  Install("bin/wine", k64BitModules);
  EXPECT_EQ(Runs(), "64");
  Install("bin/wine", k32BitModules);
  EXPECT_EQ(Runs(), "both");
  fs::remove_all(folder / "lib/x86_64-linux-gnu");
  EXPECT_EQ(Runs(), "32");
}

TEST_F(Wine, HasItsModulesInTheLibrariesThatItStandsBeside) {
  folder.MakeFolder("bin");
  Install("lib/wine/wine64", k64BitModules);
  EXPECT_EQ(Runs(), "64");
}

TEST_F(Wine, IsTakenToRunEverythingWhereItsModulesAreNotFound) {
  Install("bin/wine");
  EXPECT_EQ(Runs(), "both");
}

TEST_F(Wine, IsFoundThroughTheLinkThatLeadsToIt) {
  Install("opt/bin/wine", "opt/lib64/wine/x86_64-windows");
  folder.MakeFolder("bin");
  fs::create_symlink("../opt/bin/wine", folder / "bin/wine");
  EXPECT_EQ(Runs(), "64");
}

TEST_F(Wine, RunsNo64BitProgramsInAFolderOf32BitWindows) {
  Install("bin/wine", k64BitModules);
  Install("bin/wine", k32BitModules);
  MakeWindowsFolder("win64");
  wanted.Set("win32");
  EXPECT_EQ(Runs(), "both") << "what is there counts before what is wanted";
  MakeWindowsFolder("win32");
  EXPECT_EQ(Runs(), "32");
  prefix.Set(folder / "another");
  EXPECT_EQ(Runs(), "32") << "it will be made of that kind";
  wanted.Set(std::nullopt);
  EXPECT_EQ(Runs(), "both");
  prefix.Set(std::nullopt);
  fs::remove_all(folder / "lib/wine/i386-windows");
  EXPECT_EQ(Runs(), "none");
}

// What the start of a program for Windows fails with; nothing is started.
TEST_F(Wine, ThatCannotRunAProgramIsNotStarted) {
  const auto failure = [&](std::uint16_t processor) {
    const std::string tool = folder.WriteFile("tool.exe", WindowsHeaders(processor));
    try {
      SystemPlatform().StartProcess(tool, {}, StartWindow::kNormal);
    } catch (const RuntimeError& error) {
      return std::to_string(error.Number()) + " " + error.Description();
    }
    return std::string("none");
  };
  const std::string tool = folder / "tool.exe";
  EXPECT_EQ(failure(kI386),
            "53 " + tool + " is a 32-bit program for Windows, and wine is not installed");
  Install("bin/wine", k64BitModules);
  EXPECT_EQ(failure(kI386),
            "53 " + tool + " is a 32-bit program for Windows, and wine runs only 64-bit ones here");
  EXPECT_EQ(failure(kArm64), "5 " + tool + " is a program for Windows on another processor");
  MakeWindowsFolder("win32");
  EXPECT_EQ(failure(kX86_64),
            "53 " + tool + " is a 64-bit program for Windows, and wine runs none here");
}

}  // namespace
}  // namespace tarvo::test
