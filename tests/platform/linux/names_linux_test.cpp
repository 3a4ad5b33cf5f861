#include <filesystem>

#include "platform/names_fixture.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

TEST_F(ResolveNameTest, FindsHiddenNamesAndLinks) {
  folder.WriteFile(".Hidden");
  fs::create_symlink(".Hidden", folder / "Link");
  EXPECT_EQ(ResolveName(platform, folder / ".hidden"), folder / ".Hidden");
  EXPECT_EQ(ResolveName(platform, folder / "LINK"), folder / "Link");
}

TEST_F(NamesTest, FoldersAndFilesAreToldApart) {
  folder.MakeFolder("Data");
  folder.WriteFile("Plain");
  folder.WriteFile(".hidden");
  fs::create_symlink("Data", folder / "to folder");
  fs::create_symlink("Plain", folder / "to file");
  fs::create_symlink("gone", folder / "broken");
  for (const char* name : {"Data", "DATA", "to folder", "TO FOLDER", "."}) {
    EXPECT_TRUE(FolderExists(platform, folder / name)) << name;
    EXPECT_FALSE(FileExists(platform, folder / name)) << name;
  }
  for (const char* name : {"Plain", "plain", ".hidden", ".HIDDEN", "to file"}) {
    EXPECT_FALSE(FolderExists(platform, folder / name)) << name;
    EXPECT_TRUE(FileExists(platform, folder / name)) << name;
  }
  for (const char* name : {"broken", "missing", "Plain/x", "missing/x"}) {
    EXPECT_FALSE(FolderExists(platform, folder / name)) << name;
    EXPECT_FALSE(FileExists(platform, folder / name)) << name;
  }
}

TEST_F(ListFolderTest, GivesHiddenFilesAndFoldersOnlyWhenAskedFor) {
  folder.WriteFile("file");
  folder.WriteFile(".hidden");
  folder.MakeFolder("folder");
  folder.MakeFolder(".hidden folder");
  fs::permissions(folder.WriteFile("read-only"), fs::perms(0444));
  EXPECT_THAT(Listed("*", kNormal), UnorderedElementsAre("file", "read-only"));
  EXPECT_THAT(Listed("*", kHidden), UnorderedElementsAre("file", "read-only", ".hidden"));
  EXPECT_THAT(Listed("*", kDirectory), UnorderedElementsAre("file", "read-only", "folder"));
  EXPECT_THAT(Listed("*", kDirectory | kHidden),
              UnorderedElementsAre("file", "read-only", "folder", ".hidden", ".hidden folder"));
  EXPECT_THAT(Listed("*fold*", kDirectory), ElementsAre("folder"));
}

TEST_F(ListFolderTest, CountsALinkToAFolderAsAFolderAndAnyOtherAsAFile) {
  folder.MakeFolder("folder");
  folder.WriteFile("file");
  fs::create_symlink("folder", folder / "to folder");
  fs::create_symlink("file", folder / "to file");
  fs::create_symlink("gone", folder / "broken");
  fs::create_symlink("circle", folder / "circle");
  EXPECT_THAT(Listed("*", kNormal), UnorderedElementsAre("file", "to file", "broken", "circle"));
  EXPECT_THAT(Listed("*", kDirectory),
              UnorderedElementsAre("file", "to file", "broken", "circle", "folder", "to folder"));
}

}  // namespace
}  // namespace tarvo::test
