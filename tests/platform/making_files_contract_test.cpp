#include <filesystem>

#include "contract.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

TEST_P(PlatformContract, AFileIsMadeOnceAndOpenForReadingAndWriting) {
  const auto file = platform.MakeFile("new", FileUse::kData);
  file->WriteAt(0, "abc");
  EXPECT_EQ(file->ReadAt(0, 10), "abc");
  EXPECT_EQ(ErrorOf([&] { platform.MakeFile("new", FileUse::kData); }), 75);
  EXPECT_EQ(folder.ReadFile("new"), "abc");
}

TEST_P(PlatformContract, AFileIsNotMadeWithoutItsFolder) {
  folder.WriteFile("plain");
  EXPECT_EQ(ErrorOf([&] { platform.MakeFile("a/b", FileUse::kData); }), 76);
  EXPECT_EQ(ErrorOf([&] { platform.MakeFile("plain/b", FileUse::kData); }), 76);
  EXPECT_EQ(ErrorOf([&] { platform.MakeFile(std::string(256, 'x'), FileUse::kData); }), 52);
}

TEST_P(PlatformContract, RenamingReplacesAFileOfTheNewName) {
  folder.WriteFile("new", "new");
  folder.WriteFile("Data/old", "old");
  platform.RenameFile("new", "Data/old");
  EXPECT_EQ(folder.ReadFile("Data/old"), "new");
  EXPECT_FALSE(fs::exists(folder / "new"));
}

TEST_P(PlatformContract, RenamingTellsAMissingFileFromAMissingFolder) {
  folder.WriteFile("file", "kept");
  folder.MakeFolder("Data");
  EXPECT_EQ(ErrorOf([&] { platform.RenameFile("missing", "file"); }), 53);
  EXPECT_EQ(ErrorOf([&] { platform.RenameFile("nowhere/missing", "file"); }), 76);
  EXPECT_EQ(ErrorOf([&] { platform.RenameFile("file", "nowhere/file"); }), 76);
  EXPECT_EQ(ErrorOf([&] { platform.RenameFile("file", "Data"); }), 75);
  EXPECT_EQ(ErrorOf([&] { platform.RenameFile("file", std::string(256, 'x')); }), 52);
  EXPECT_EQ(folder.ReadFile("file"), "kept");
}

TEST_P(PlatformContract, RemovingAFileRefusesFoldersAndWhatIsMissing) {
  folder.MakeFolder("Data");
  EXPECT_EQ(ErrorOf([&] { platform.RemoveFile("missing"); }), 53);
  EXPECT_EQ(ErrorOf([&] { platform.RemoveFile("nowhere/missing"); }), 76);
  EXPECT_EQ(ErrorOf([&] { platform.RemoveFile("Data"); }), 75);
  EXPECT_TRUE(fs::exists(folder / "Data"));
}

}  // namespace
}  // namespace tarvo::test
