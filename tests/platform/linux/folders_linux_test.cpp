#include <dirent.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>
#include <map>

#include "platform/child_process.h"
#include "platform/contract.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;

std::map<std::string, FolderEntry> ByName(const std::vector<FolderEntry>& entries) {
  std::map<std::string, FolderEntry> result;
  for (const FolderEntry& entry : entries) result[entry.name] = entry;
  return result;
}

std::vector<std::string> Names(const std::vector<FolderEntry>& entries) {
  std::vector<std::string> names;
  for (const FolderEntry& entry : entries) names.push_back(entry.name);
  return names;
}

TEST_P(PlatformContract, AFolderIsNotMadeInPlaceOfAFileOrALink) {
  folder.WriteFile("plain", "kept");
  fs::create_symlink("gone", folder / "broken");
  EXPECT_EQ(ErrorOf([&] { platform.MakeFolder("plain"); }), 75);
  EXPECT_EQ(ErrorOf([&] { platform.MakeFolder("broken"); }), 75);
  EXPECT_EQ(folder.ReadFile("plain"), "kept");
}

TEST_P(PlatformContract, ANewFolderObeysTheUsersMask) {
  ASSERT_EQ(ErrorInChild([&] {
              ::umask(027);
              platform.MakeFolder("masked");
              ::umask(0);
              platform.MakeFolder("open");
            }),
            0);
  EXPECT_EQ(fs::status(folder / "masked").permissions(), fs::perms(0750));
  EXPECT_EQ(fs::status(folder / "open").permissions(), fs::perms(0777));
}

TEST_P(PlatformContract, TheCurrentFolderFollowsEveryChange) {
  folder.MakeFolder("a/b");
  platform.ChangeCurrentFolder("a");
  EXPECT_EQ(platform.CurrentFolder(), folder / "a");
  platform.ChangeCurrentFolder("b");
  EXPECT_EQ(platform.CurrentFolder(), folder / "a/b");
  EXPECT_EQ(fs::current_path(), folder / "a/b") << "it is the process's own";
  platform.ChangeCurrentFolder("..");
  EXPECT_EQ(platform.CurrentFolder(), folder / "a");
  platform.ChangeCurrentFolder(folder.Path());
  EXPECT_EQ(platform.CurrentFolder(), folder.Path());
  platform.ChangeCurrentFolder("/");
  platform.ChangeCurrentFolder("..");
  EXPECT_EQ(platform.CurrentFolder(), "/");
}

TEST_P(PlatformContract, EnteringALinkEntersWhatItNames) {
  folder.MakeFolder("real");
  fs::create_symlink("real", folder / "link");
  platform.ChangeCurrentFolder("link");
  EXPECT_EQ(platform.CurrentFolder(), folder / "real");
}

TEST_P(PlatformContract, WhatIsNoFolderCannotBeEntered) {
  folder.WriteFile("plain");
  fs::create_symlink("circle", folder / "circle");
  for (const char* name : {"missing", "plain", "plain/x", "circle", ""}) {
    EXPECT_EQ(ErrorOf([&] { platform.ChangeCurrentFolder(name); }), 76) << name;
  }
  EXPECT_EQ(platform.CurrentFolder(), folder.Path());
}

TEST_P(PlatformContract, ACurrentFolderThatIsGoneIsAMissingPath) {
  platform.ChangeCurrentFolder(folder.MakeFolder("gone"));
  fs::remove(folder / "gone");
  EXPECT_EQ(ErrorOf([&] { platform.CurrentFolder(); }), 76);
}

TEST_P(PlatformContract, ChangingTheDriveChangesNothingWhereThereAreNone) {
  platform.ChangeCurrentDrive(U'C');
  EXPECT_EQ(platform.CurrentFolder(), folder.Path());
}

TEST_P(PlatformContract, OnlyTheRootIsADriveRoot) {
  EXPECT_TRUE(platform.IsDriveRoot("/"));
  EXPECT_TRUE(platform.IsDriveRoot("//"));
  EXPECT_FALSE(platform.IsDriveRoot("/ab"));
  EXPECT_FALSE(platform.IsDriveRoot("C:\\"));
  EXPECT_FALSE(platform.IsDriveRoot(""));
}

TEST_P(PlatformContract, AListingTellsFoldersLinksAndHiddenNames) {
  folder.MakeFolder("Data");
  folder.MakeFolder(".cache");
  folder.WriteFile("plain");
  folder.WriteFile(".hidden");
  fs::create_symlink("plain", folder / "to file");
  fs::create_symlink("Data", folder / "to folder");
  fs::create_symlink("gone", folder / ".broken");
  fs::create_symlink("circle", folder / "circle");
  const auto entries = ByName(platform.Entries(folder.Path()));
  const auto kind = [&](const std::string& name) {
    const FolderEntry& entry = entries.at(name);
    return std::string(entry.isFolder ? "folder " : "") + (entry.isLink ? "link " : "") +
           (entry.isHidden ? "hidden" : "");
  };
  EXPECT_EQ(entries.size(), 8u);
  EXPECT_EQ(kind("Data"), "folder ");
  EXPECT_EQ(kind(".cache"), "folder hidden");
  EXPECT_EQ(kind("plain"), "");
  EXPECT_EQ(kind(".hidden"), "hidden");
  EXPECT_EQ(kind("to file"), "link ");
  EXPECT_EQ(kind("to folder"), "link ");
  EXPECT_EQ(kind(".broken"), "link hidden");
  EXPECT_EQ(kind("circle"), "link ");
}

TEST_P(PlatformContract, AListingIsInTheSystemsOrder) {
  for (const char* name : {"b", "A", "z", "c", "B", "10", "9", "é"}) folder.WriteFile(name);
  std::vector<std::string> expected;
  const std::unique_ptr<DIR, int (*)(DIR*)> listing(::opendir(folder.Path().c_str()), ::closedir);
  while (const dirent* found = ::readdir(listing.get())) {
    const std::string name = found->d_name;
    if (name != "." && name != "..") expected.push_back(name);
  }
  ASSERT_EQ(expected.size(), 8u);
  EXPECT_EQ(Names(platform.Entries(folder.Path())), expected);
}

TEST_P(PlatformContract, AListingGivesAnyNameAsItStands) {
  for (const std::string& name :
       {std::string("\xFF\xC3(bad"), std::string(255, 'n'), std::string("a\"b'c"),
        std::string("two\nlines"), std::string("back\\slash"), std::string(" "),
        std::string("...")}) {
    const std::string place = folder.MakeFolder("one");
    folder.WriteFile("one/" + name);
    EXPECT_THAT(Names(platform.Entries(place)), ElementsAre(name));
    EXPECT_TRUE(platform.OpenFile(place + "/" + name, OpenFor::kReading));
    fs::remove_all(place);
  }
}

TEST_P(PlatformContract, WhatIsNoFolderCannotBeListed) {
  folder.WriteFile("plain");
  fs::create_symlink("circle", folder / "circle");
  for (const char* name : {"missing", "plain", "plain/x", "circle", ""}) {
    EXPECT_EQ(ErrorOf([&] { platform.Entries(name); }), 76) << name;
  }
}

TEST_P(PlatformContract, AttributesTellFoldersReadOnlyAndHiddenNames) {
  folder.WriteFile("plain");
  folder.WriteFile(".hidden");
  folder.MakeFolder("Data/.cache");
  fs::permissions(folder.WriteFile("fixed"), fs::perms(0444));
  fs::permissions(folder.WriteFile("others write"), fs::perms(0466));
  fs::permissions(folder.WriteFile(".fixed"), fs::perms(0400));
  EXPECT_EQ(platform.Attributes("plain"), kNormal);
  EXPECT_EQ(platform.Attributes(".hidden"), kHidden);
  EXPECT_EQ(platform.Attributes(folder / "Data"), kDirectory);
  EXPECT_EQ(platform.Attributes("Data/.cache"), kDirectory | kHidden);
  EXPECT_EQ(platform.Attributes("fixed"), kReadOnly);
  EXPECT_EQ(platform.Attributes("others write"), kReadOnly);
  EXPECT_EQ(platform.Attributes(".fixed"), kReadOnly | kHidden);
}

TEST_P(PlatformContract, TheFoldersDotAndDotDotAreNotHidden) {
  folder.MakeFolder("Data");
  for (const char* name : {".", "..", "Data/.", "Data/..", "/"}) {
    EXPECT_EQ(platform.Attributes(name).value_or(0) & (kDirectory | kHidden), kDirectory) << name;
  }
}

TEST_P(PlatformContract, AttributesFollowLinks) {
  folder.MakeFolder("Data");
  fs::create_symlink("Data", folder / "link");
  fs::create_symlink("gone", folder / "broken");
  fs::create_symlink("circle", folder / "circle");
  EXPECT_EQ(platform.Attributes("link"), kDirectory);
  EXPECT_EQ(platform.Attributes("broken"), std::nullopt);
  EXPECT_EQ(platform.Attributes("circle"), std::nullopt);
}

TEST_P(PlatformContract, TellsALinkFromWhatItLeadsTo) {
  folder.MakeFolder("Data");
  fs::create_symlink("Data", folder / "link");
  fs::create_symlink("gone", folder / "broken");
  EXPECT_TRUE(platform.IsLink("link"));
  EXPECT_TRUE(platform.IsLink("broken"));
  EXPECT_FALSE(platform.IsLink("Data"));
  EXPECT_FALSE(platform.IsLink("missing"));
}

TEST_P(PlatformContract, WhatIsNotThereHasNoAttributes) {
  folder.WriteFile("plain");
  const std::string_view withNul("plain\0x", 7);
  EXPECT_EQ(platform.Attributes(withNul), std::nullopt);
  for (const std::string& name :
       {std::string("missing"), std::string("a/b"), std::string("plain/x"), std::string("PLAIN"),
        std::string(), std::string(256, 'x'), std::string(5000, 'x')}) {
    EXPECT_EQ(platform.Attributes(name), std::nullopt) << name;
  }
}

TEST_P(PlatformContract, TheProgramsFolderHoldsTheRunningProgram) {
  const fs::path program = fs::read_symlink("/proc/self/exe");
  EXPECT_EQ(platform.ProgramFolder(), program.parent_path().string());
}

}  // namespace
}  // namespace tarvo::test
