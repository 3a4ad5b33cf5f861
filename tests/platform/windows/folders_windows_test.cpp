#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>

#include "platform/contract.h"
#include "platform/windows/links.h"
#include "platform/windows/wide_text.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

void Mark(const std::string& path, DWORD attributes) {
  ASSERT_TRUE(::SetFileAttributesW(Wide(path).c_str(), attributes)) << path;
}

std::map<std::string, std::string> KindsIn(Platform& platform, const std::string& folder) {
  std::map<std::string, std::string> kinds;
  for (const FolderEntry& entry : platform.Entries(folder)) {
    kinds[entry.name] = std::string(entry.isFolder ? "folder " : "") +
                        (entry.isLink ? "link " : "") + (entry.isHidden ? "hidden" : "");
  }
  return kinds;
}

TEST_P(PlatformContract, OnlyARootIsADriveRoot) {
  for (const char* root : {R"(C:\)", R"(z:\)", R"(\\server\share\)", R"(\\server\share)", R"(\)"}) {
    EXPECT_TRUE(platform.IsDriveRoot(root)) << root;
  }
  for (const char* path : {"", "C:", R"(C:\a)", R"(\a)", R"(\\server\share\a)", "/a"}) {
    EXPECT_FALSE(platform.IsDriveRoot(path)) << path;
  }
}

TEST_P(PlatformContract, TheCurrentFolderFollowsEveryChangeUpToTheRoot) {
  folder.MakeFolder("a/b");
  platform.ChangeCurrentFolder("a");
  EXPECT_EQ(platform.CurrentFolder(), folder / "a");
  platform.ChangeCurrentFolder("b");
  EXPECT_EQ(platform.CurrentFolder(), folder / "a/b");
  platform.ChangeCurrentFolder("..");
  EXPECT_EQ(platform.CurrentFolder(), folder / "a");
  int steps = 0;
  for (; !platform.IsDriveRoot(platform.CurrentFolder()) && steps < 50; ++steps) {
    platform.ChangeCurrentFolder("..");
  }
  EXPECT_EQ(platform.CurrentFolder(), folder.Path().substr(0, 3));
  EXPECT_GT(steps, 1);
}

TEST_P(PlatformContract, WhatIsNoFolderCannotBeEntered) {
  folder.WriteFile("plain");
  for (const char* name : {"missing", "plain", "plain/x", ""}) {
    EXPECT_EQ(ErrorOf([&] { platform.ChangeCurrentFolder(name); }), 76) << name;
    EXPECT_EQ(ErrorOf([&] { platform.Entries(name); }), 76) << name;
  }
  EXPECT_EQ(platform.CurrentFolder(), folder.Path());
}

TEST_P(PlatformContract, ADriveIsEnteredByItsLetterInTheFolderWhereItWasLeft) {
  const char32_t drive = static_cast<unsigned char>(folder.Path()[0]);
  platform.ChangeCurrentDrive(drive);
  EXPECT_EQ(platform.CurrentFolder(), folder.Path());
  EXPECT_EQ(ErrorOf([&] { platform.ChangeCurrentDrive(U'1'); }), 5);
  EXPECT_EQ(ErrorOf([&] { platform.ChangeCurrentDrive(U'q'); }), 68);
  EXPECT_EQ(platform.CurrentFolder(), folder.Path());
}

TEST_P(PlatformContract, AListingTellsFoldersAndHiddenNames) {
  folder.MakeFolder("Data");
  Mark(folder.MakeFolder("cache"), FILE_ATTRIBUTE_HIDDEN);
  folder.WriteFile("plain");
  Mark(folder.WriteFile("hidden"), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY);
  const std::map<std::string, std::string> expected = {
      {"Data", "folder "}, {"cache", "folder hidden"}, {"plain", ""}, {"hidden", "hidden"}};
  EXPECT_EQ(KindsIn(platform, folder.Path()), expected);
}

TEST_P(PlatformContract, NamesKeepEveryCharacter) {
  for (const std::string& name :
       {std::string("Größe Ł 漢字.csv"), std::string("a \xF0\x9F\x98\x80"),
        std::string("100% & ^ ;,=+'`~"), std::string(255, 'n')}) {
    platform.MakeFile(name, FileUse::kData)->WriteAt(0, "x");
    EXPECT_EQ(KindsIn(platform, ".").count(name), 1u) << name;
    EXPECT_EQ(platform.OpenFile(name, OpenFor::kReading)->ReadAt(0, 5), "x");
    platform.RemoveFile(name);
  }
}

TEST_P(PlatformContract, NamesOfDevicesAndWildcardsNameNoFile) {
  for (const char* name : {"NUL", "CON", R"(\\.\NUL)"}) {
    EXPECT_EQ(ErrorOf([&] { platform.OpenFile(name, OpenFor::kReading); }), 52) << name;
    EXPECT_EQ(platform.Attributes(name), std::nullopt) << name;
  }
  folder.WriteFile("plain");
  EXPECT_NE(ErrorOf([&] { platform.OpenFile("pl*n", OpenFor::kReading); }), 0);
  EXPECT_EQ(platform.Attributes("pl?in"), std::nullopt);
}

TEST_P(PlatformContract, AttributesAreTheSystemsOwn) {
  folder.MakeFolder("Data");
  Mark(folder.MakeFolder("cache"), FILE_ATTRIBUTE_HIDDEN);
  Mark(folder.WriteFile("plain"), FILE_ATTRIBUTE_NORMAL);
  Mark(folder.WriteFile("fixed"), FILE_ATTRIBUTE_READONLY);
  Mark(folder.WriteFile("both"), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
  constexpr unsigned kNamed = kReadOnly | kHidden | kDirectory;
  EXPECT_EQ(platform.Attributes("Data"), kDirectory) << "and no other mark";
  EXPECT_EQ(platform.Attributes("cache"), kDirectory | kHidden);
  EXPECT_EQ(platform.Attributes("plain").value_or(99) & kNamed, kNormal);
  EXPECT_EQ(platform.Attributes("FIXED").value_or(99) & kNamed, kReadOnly);
  EXPECT_EQ(platform.Attributes("both").value_or(99) & kNamed, kReadOnly | kHidden);
  for (const std::string& name : {std::string("missing"), std::string("a/b"),
                                  std::string("plain/x"), std::string(), std::string(256, 'x')}) {
    EXPECT_EQ(platform.Attributes(name), std::nullopt) << name;
  }
}

TEST_P(PlatformContract, SettingAttributesChangesOnlyReadOnly) {
  Mark(folder.WriteFile("both"), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
  EXPECT_NE(ErrorOf([&] { platform.RemoveFile("both"); }), 0);
  platform.SetAttributes("both", kNormal);
  EXPECT_EQ(platform.Attributes("both").value_or(0) & (kReadOnly | kHidden), kHidden);
  platform.SetAttributes("both", kReadOnly);
  EXPECT_EQ(platform.Attributes("both").value_or(0) & (kReadOnly | kHidden), kReadOnly | kHidden);
  platform.SetAttributes("both", kNormal);
  platform.RemoveFile("both");
  EXPECT_EQ(ErrorOf([&] { platform.SetAttributes("missing", kNormal); }), 53);
}

TEST_P(PlatformContract, OnlyAnEmptyFolderIsRemovedAsAFolder) {
  folder.WriteFile("full/file");
  folder.WriteFile("file");
  folder.MakeFolder("empty");
  EXPECT_EQ(ErrorOf([&] { platform.RemoveFolder("full"); }), 75);
  EXPECT_EQ(ErrorOf([&] { platform.RemoveFolder("file"); }), 75);
  EXPECT_EQ(ErrorOf([&] { platform.RemoveFolder("missing"); }), 76);
  platform.RemoveFolder("empty");
  EXPECT_FALSE(fs::exists(folder / "empty"));
  EXPECT_TRUE(fs::exists(folder / "full/file"));
}

TEST_P(PlatformContract, ALinkToAFolderIsKnownAndWhatItLeadsToIsNotRemovedWithIt) {
  folder.WriteFile("real/file", "kept");
  const FolderLink link(folder / "real", folder / "link");
  EXPECT_TRUE(platform.IsLink("link"));
  EXPECT_FALSE(platform.IsLink("real"));
  EXPECT_FALSE(platform.IsLink("missing"));
  EXPECT_EQ(KindsIn(platform, ".")["link"], "link ");
  EXPECT_EQ(platform.Attributes("link").value_or(0) & kDirectory, kDirectory);
  EXPECT_EQ(platform.Entries("link").size(), 1u);
  EXPECT_EQ(ErrorOf([&] { platform.RemoveFolder("link"); }), 75);
  const int error = ErrorOf([&] { platform.RemoveFile("link"); });
  // Wine removes no link to a folder.
  EXPECT_TRUE(error == 0 || error == 75) << error;
  EXPECT_EQ(platform.Attributes("link").has_value(), error != 0);
  EXPECT_EQ(folder.ReadFile("real/file"), "kept");
}

TEST_P(PlatformContract, AFileThatIsOpenIsReplacedWholeOrNotAtAll) {
  folder.WriteFile("new", "new");
  folder.WriteFile("old", "old");
  const auto old = platform.OpenFile("old", OpenFor::kReading);
  const int error = ErrorOf([&] { platform.RenameFile("new", "old"); });
  // Older systems, and Wine, do not let an open file be replaced.
  EXPECT_TRUE(error == 0 || error == 70) << error;
  EXPECT_EQ(old->ReadAt(0, 3), "old") << "an open file stays the one that was opened";
  EXPECT_EQ(folder.ReadFile("old"), error == 0 ? "new" : "old");
  EXPECT_EQ(fs::exists(folder / "new"), error != 0);
}

TEST_P(PlatformContract, AReadOnlyFileIsReplaced) {
  folder.WriteFile("new", "new");
  Mark(folder.WriteFile("old", "old"), FILE_ATTRIBUTE_READONLY);
  platform.RenameFile("new", "old");
  EXPECT_EQ(folder.ReadFile("old"), "new");
  EXPECT_FALSE(fs::exists(folder / "new"));
}

TEST_P(PlatformContract, EverythingButEnteringWorksBeyondTheClassicLongestPath) {
  std::string deep = folder.Path();
  for (int i = 0; i < 12; ++i) platform.MakeFolder(deep += "\\" + std::string(100, 'n'));
  ASSERT_GT(deep.size(), 4u * MAX_PATH);
  const std::string file = deep + "\\file";
  platform.OpenFile(file, OpenFor::kReadingAndWriting)->WriteAt(0, "deep");
  EXPECT_EQ(platform.OpenFile(file, OpenFor::kReading)->ReadAt(0, 10), "deep");
  EXPECT_EQ(platform.Attributes(deep), kDirectory);
  EXPECT_EQ(platform.Entries(deep).size(), 1u);
  platform.RenameFile(file, deep + "\\other");
  const auto watch = platform.WatchFolder(folder.Path());
  platform.MakeFile(file, FileUse::kData)->WriteAt(0, "x");
  EXPECT_EQ(watch->NewestFile(), file);
  platform.RemoveFile(file);
  platform.RemoveFile(deep + "\\other");
  EXPECT_EQ(ErrorOf([&] { platform.OpenFile(deep + "\\gone", OpenFor::kReading); }), 53);
  EXPECT_EQ(ErrorOf([&] { platform.MakeFolder(deep + "\\gone\\x"); }), 76);
  EXPECT_EQ(ErrorOf([&] { platform.RemoveFolder(deep + "\\gone"); }), 76);
  for (; deep != folder.Path(); deep = FolderOf(deep)) platform.RemoveFolder(deep);
  EXPECT_TRUE(fs::is_empty(folder.Path()));
}

TEST_P(PlatformContract, HiddenFilesAndLinksDoNotCountForAWatch) {
  folder.MakeFolder("Data");
  folder.MakeFolder("outside");
  Mark(folder.MakeFolder("Data/old"), FILE_ATTRIBUTE_HIDDEN);
  const auto watch = platform.WatchFolder(folder / "Data");
  folder.WriteFile("Data/seen.csv", "x");
  Mark(folder.WriteFile("Data/hidden.csv", "x"), FILE_ATTRIBUTE_HIDDEN);
  folder.WriteFile("Data/old/a.csv", "x");
  EXPECT_EQ(watch->NewestFile(), folder / "Data/seen.csv");
  const FolderLink link(folder / "outside", folder / "a link");
  const auto outer = platform.WatchFolder(folder.Path());
  folder.WriteFile("outside/a.csv", "x");
  EXPECT_EQ(outer->NewestFile(), folder / "outside/a.csv") << "not through the link";
}

}  // namespace
}  // namespace tarvo::test
