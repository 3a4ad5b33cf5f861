#include <sys/stat.h>

#include <filesystem>

#include "platform/child_process.h"
#include "platform/contract.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

mode_t ModeOf(const std::string& path) {
  struct stat status {};
  ::stat(path.c_str(), &status);
  return status.st_mode & 07777;
}

TEST_P(PlatformContract, AFileIsNotMadeInPlaceOfAFolderOrThroughALink) {
  folder.MakeFolder("Data");
  fs::create_symlink("elsewhere", folder / "link");
  EXPECT_EQ(ErrorOf([&] { platform.MakeFile("Data", FileUse::kData); }), 75);
  EXPECT_EQ(ErrorOf([&] { platform.MakeFile("link", FileUse::kData); }), 75);
  EXPECT_FALSE(fs::exists(folder / "elsewhere"));
}

TEST_P(PlatformContract, OnlyAProgramMayBeExecutedAndTheUsersMaskApplies) {
  const mode_t before = ::umask(027);
  platform.MakeFile("data", FileUse::kData);
  platform.MakeFile("program", FileUse::kProgram);
  ::umask(before);
  EXPECT_EQ(ModeOf(folder / "data"), 0640u);
  EXPECT_EQ(ModeOf(folder / "program"), 0750u);
}

TEST_P(PlatformContract, AFileThatIsReplacedStaysOpenAsItWas) {
  folder.WriteFile("new", "new");
  folder.WriteFile("old", "old");
  const auto old = platform.OpenFile("old", OpenFor::kReading);
  platform.RenameFile("new", "old");
  EXPECT_EQ(old->ReadAt(0, 3), "old");
  EXPECT_EQ(folder.ReadFile("old"), "new");
}

TEST_P(PlatformContract, RenamingReplacesALinkAndNotWhatItLeadsTo) {
  folder.WriteFile("new", "new");
  folder.WriteFile("elsewhere", "kept");
  fs::create_symlink("elsewhere", folder / "link");
  platform.RenameFile("new", "link");
  EXPECT_FALSE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(folder.ReadFile("link"), "new");
  EXPECT_EQ(folder.ReadFile("elsewhere"), "kept");
}

TEST_P(PlatformContract, AFileIsRemovedAndALinkItself) {
  folder.WriteFile("file");
  folder.WriteFile("kept");
  fs::create_symlink("kept", folder / "link");
  platform.RemoveFile("file");
  platform.RemoveFile("link");
  EXPECT_FALSE(fs::exists(folder / "file"));
  EXPECT_FALSE(fs::is_symlink(folder / "link"));
  EXPECT_TRUE(fs::exists(folder / "kept"));
}

TEST_P(PlatformContract, OnlyAnEmptyFolderIsRemovedAsAFolder) {
  folder.WriteFile("full/file");
  folder.WriteFile("file");
  folder.MakeFolder("empty");
  fs::create_symlink("empty", folder / "link");
  EXPECT_EQ(ErrorOf([&] { platform.RemoveFolder("full"); }), 75);
  EXPECT_EQ(ErrorOf([&] { platform.RemoveFolder("file"); }), 75);
  EXPECT_EQ(ErrorOf([&] { platform.RemoveFolder("link"); }), 75);
  EXPECT_EQ(ErrorOf([&] { platform.RemoveFolder("missing"); }), 76);
  platform.RemoveFolder("empty");
  EXPECT_FALSE(fs::exists(folder / "empty"));
  EXPECT_TRUE(fs::exists(folder / "full/file"));
}

TEST_P(PlatformContract, NothingIsRenamedOrRemovedInAFolderThatMayNotBeWritten) {
  folder.WriteFile("fixed/file", "kept");
  folder.MakeFolder("fixed/folder");
  fs::permissions(folder / "fixed", fs::perms(0555));
  fs::permissions(folder.Path(), fs::perms(0755));
  EXPECT_EQ(ErrorAsOrdinaryUser([&] { platform.MakeFile("fixed/new", FileUse::kData); }), 70);
  EXPECT_EQ(ErrorAsOrdinaryUser([&] { platform.RenameFile("fixed/file", "fixed/new"); }), 70);
  EXPECT_EQ(ErrorAsOrdinaryUser([&] { platform.RemoveFile("fixed/file"); }), 70);
  EXPECT_EQ(ErrorAsOrdinaryUser([&] { platform.RemoveFolder("fixed/folder"); }), 70);
  fs::permissions(folder / "fixed", fs::perms(0755));
}

}  // namespace
}  // namespace tarvo::test
