#include <gmock/gmock.h>

#include <filesystem>
#include <set>

#include "contract.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;

std::vector<std::string> Names(const std::vector<FolderEntry>& entries) {
  std::vector<std::string> names;
  for (const FolderEntry& entry : entries) names.push_back(entry.name);
  return names;
}

TEST_P(PlatformContract, AFolderIsMadeOnce) {
  platform.MakeFolder("Drivers");
  EXPECT_TRUE(fs::is_directory(folder / "Drivers"));
  EXPECT_EQ(ErrorOf([&] { platform.MakeFolder("Drivers"); }), 75);
  EXPECT_EQ(ErrorOf([&] { platform.MakeFolder(folder / "Drivers"); }), 75);
}

TEST_P(PlatformContract, AFolderIsNotMadeWithoutItsParent) {
  folder.WriteFile("plain");
  EXPECT_EQ(ErrorOf([&] { platform.MakeFolder("a/b"); }), 76);
  EXPECT_EQ(ErrorOf([&] { platform.MakeFolder("plain/b"); }), 76);
  EXPECT_EQ(ErrorOf([&] { platform.MakeFolder(""); }), 76);
  EXPECT_FALSE(fs::exists(folder / "a"));
}

TEST_P(PlatformContract, ImpossibleFolderNamesAreBadNames) {
  EXPECT_EQ(ErrorOf([&] { platform.MakeFolder(std::string(256, 'x')); }), 52);
  EXPECT_EQ(ErrorOf([&] { platform.MakeFolder(std::string_view("a\0b", 3)); }), 52);
  EXPECT_EQ(ErrorOf([&] { platform.ChangeCurrentFolder(std::string_view(".\0b", 3)); }), 52);
  EXPECT_EQ(ErrorOf([&] { platform.Entries(std::string_view(".\0b", 3)); }), 52);
  EXPECT_TRUE(fs::is_empty(folder.Path()));
}

TEST_P(PlatformContract, AListingTakesRelativePathsAndEndSeparators) {
  folder.WriteFile("Data/file");
  EXPECT_THAT(Names(platform.Entries("Data")), ElementsAre("file"));
  EXPECT_THAT(Names(platform.Entries("Data//")), ElementsAre("file"));
  EXPECT_THAT(Names(platform.Entries(".")), ElementsAre("Data"));
  EXPECT_THAT(Names(platform.Entries("Data/../Data")), ElementsAre("file"));
  EXPECT_THAT(platform.Entries(folder.MakeFolder("empty")), ElementsAre());
}

TEST_P(PlatformContract, AListingOfALargeFolderIsComplete) {
  for (int i = 0; i < 3000; ++i) folder.WriteFile("Data/" + std::to_string(i));
  const std::vector<std::string> names = Names(platform.Entries("Data"));
  EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), 3000u);
}

TEST_P(PlatformContract, TheCodePageHasOneByteForEachCharacter) {
  EXPECT_EQ(platform.EncodeCodePage("é€Ł"), "\xE9\x80?");
  EXPECT_EQ(platform.DecodeCodePage("\xE9\x80?"), "é€?");
}

}  // namespace
}  // namespace tarvo::test
