#include <sys/stat.h>

#include <filesystem>

#include "archive_maker.h"
#include "base/runtime_error.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using Tree = std::map<std::string, std::string>;

// Unpacking into the folder "target".
class UnpackingPackages : public Packages {
 protected:
  // The error with which unpacking a sound package fails; 0 for none.
  int ErrorOf(const std::vector<MadeMember>& members) {
    folder.WriteFile("package.drv", ArchiveOf(members));
    Package package(SystemPlatform(), folder / "package.drv");
    EXPECT_FALSE(package.Check());
    try {
      package.Unpack(folder / "target");
    } catch (const RuntimeError& error) {
      return error.Number();
    }
    return 0;
  }

  Tree Target() { return TreeOf(folder / "target"); }
};

TEST_F(UnpackingPackages, MakesEveryFileAndFolder) {
  auto members = SmallDriver();
  members.push_back({.name = "Data/", .content = ""});
  members.push_back({.name = "a\\b/c.txt", .content = "deep", .isDeflated = true});
  members.push_back({.name = "empty", .content = ""});
  Install(ArchiveOf(members));
  const std::string tool = SmallDriver()[1].content;
  EXPECT_EQ(Target(), (Tree{{"driver.inf", "[driver]\r\n"},
                            {"Download.EXE", tool},
                            {"Data", "<folder>"},
                            {"a", "<folder>"},
                            {"a/b", "<folder>"},
                            {"a/b/c.txt", "deep"},
                            {"empty", ""}}));
}

TEST_F(UnpackingPackages, MakesTheFolderWithItsParents) {
  folder.WriteFile("package.drv", ArchiveOf(SmallDriver()));
  Package package(SystemPlatform(), folder / "package.drv");
  ASSERT_FALSE(package.Check());
  folder.MakeFolder("drivers");
  package.Unpack(folder / "Drivers/Meter/sub/");
  EXPECT_TRUE(fs::exists(folder / "drivers/Meter/sub/driver.inf"));
  EXPECT_FALSE(fs::exists(folder / "Drivers"));
}

TEST_F(UnpackingPackages, ReplacesItsFilesAndLeavesAllOthers) {
  folder.WriteFile("target/DRIVER.INF", "old");
  folder.WriteFile("target/other.txt", "kept");
  folder.WriteFile("target/data/log.csv", "kept too");
  auto members = SmallDriver();
  members.push_back({.name = "Data/new.csv", .content = "new"});
  Install(ArchiveOf(members));
  const Tree tree = Target();
  EXPECT_EQ(tree.at("DRIVER.INF"), "[driver]\r\n") << "not doubled in another letter case";
  EXPECT_EQ(tree.at("other.txt"), "kept");
  EXPECT_EQ(tree.at("data/log.csv"), "kept too");
  EXPECT_EQ(tree.at("data/new.csv"), "new");
  EXPECT_EQ(tree.size(), 6u);
}

TEST_F(UnpackingPackages, ReplacesAFileThatMayNotBeWrittenAndKeepsNoModeOfIt) {
  folder.WriteFile("target/driver.inf", "old");
  fs::permissions(folder / "target/driver.inf", fs::perms(0444));
  Install(ArchiveOf(SmallDriver()));
  EXPECT_EQ(Target().at("driver.inf"), "[driver]\r\n");
  EXPECT_NE(fs::status(folder / "target/driver.inf").permissions() & fs::perms::owner_write,
            fs::perms::none);
}

TEST_F(UnpackingPackages, OnlyProgramsMayBeExecutedAndNoneAsAnotherUser) {
  const mode_t before = ::umask(022);
  auto members = SmallDriver();
  members[0].attributes = 0107777U << 16;
  members[1].attributes = 0107600U << 16;
  members[0].host = members[1].host = 3;
  Install(ArchiveOf(members));
  ::umask(before);
  const auto mode = [&](const char* name) {
    return static_cast<unsigned>(
        fs::status(folder / (std::string("target/") + name)).permissions());
  };
  EXPECT_EQ(mode("driver.inf"), 0644u);
  EXPECT_EQ(mode("Download.EXE"), 0755u);
}

TEST_F(UnpackingPackages, NothingIsWrittenThroughALinkInAFoldersPlace) {
  folder.MakeFolder("elsewhere");
  folder.WriteFile("target/driver.inf", "old");
  fs::create_symlink("../elsewhere", folder / "target/data");
  auto members = SmallDriver();
  members.push_back({.name = "Data/a", .content = "x"});
  EXPECT_EQ(ErrorOf(members), 75);
  EXPECT_TRUE(fs::is_empty(folder / "elsewhere"));
  EXPECT_EQ(folder.ReadFile("target/driver.inf"), "old") << "all old, not some of it";
}

TEST_F(UnpackingPackages, ALinkInAFilesPlaceIsReplaced) {
  folder.WriteFile("elsewhere", "kept");
  folder.MakeFolder("target");
  fs::create_symlink("../elsewhere", folder / "target/Driver.inf");
  Install(ArchiveOf(SmallDriver()));
  EXPECT_EQ(folder.ReadFile("elsewhere"), "kept");
  EXPECT_FALSE(fs::is_symlink(folder / "target/Driver.inf"));
  EXPECT_EQ(folder.ReadFile("target/Driver.inf"), "[driver]\r\n");
}

TEST_F(UnpackingPackages, TheFolderItselfMayBeALink) {
  folder.MakeFolder("elsewhere");
  fs::create_symlink("elsewhere", folder / "target");
  Install(ArchiveOf(SmallDriver()));
  EXPECT_TRUE(fs::exists(folder / "elsewhere/driver.inf"));
}

TEST_F(UnpackingPackages, AFileInAFoldersPlaceAndAFolderInAFilesPlaceAreFailures) {
  auto members = SmallDriver();
  members.push_back({.name = "Data/a", .content = "x"});
  folder.WriteFile("target/DATA", "a file");
  EXPECT_EQ(ErrorOf(members), 75);
  fs::remove(folder / "target/DATA");
  folder.MakeFolder("target/DRIVER.INF");
  EXPECT_EQ(ErrorOf(members), 75);
  EXPECT_EQ(Target(), (Tree{{"DRIVER.INF", "<folder>"}}));
  fs::remove_all(folder / "target");
  folder.WriteFile("target", "a file");
  EXPECT_EQ(ErrorOf(members), 75);
}

TEST_F(UnpackingPackages, WhatAKilledRunHasLeftIsRemoved) {
  folder.WriteFile("target/.tarvo-new-0", "left");
  folder.WriteFile("target/old/deep/.tarvo-new-17", "left");
  folder.WriteFile("target/.tarvo-new-", "a user's");
  folder.WriteFile("target/.tarvo-new-1x", "a user's");
  folder.WriteFile("elsewhere/.tarvo-new-1", "behind a link");
  fs::create_symlink("../elsewhere", folder / "target/link");
  Install(ArchiveOf(SmallDriver()));
  const Tree tree = Target();
  EXPECT_FALSE(tree.contains(".tarvo-new-0"));
  EXPECT_FALSE(tree.contains("old/deep/.tarvo-new-17"));
  EXPECT_TRUE(tree.contains(".tarvo-new-") && tree.contains(".tarvo-new-1x"));
  EXPECT_TRUE(fs::exists(folder / "elsewhere/.tarvo-new-1"));
}

TEST_F(UnpackingPackages, MembersTooLargeToKeepAreInflatedAgain) {
  std::string large;
  while (large.size() < std::size_t{17} << 20) large += std::to_string(large.size()) + ",";
  auto members = SmallDriver();
  members.push_back({.name = "a", .content = large, .isDeflated = true});
  members.push_back({.name = "b", .content = large});
  members.push_back({.name = "c", .content = large, .isDeflated = true});
  Install(ArchiveOf(members));
  for (const char* name : {"target/a", "target/b", "target/c"}) {
    EXPECT_TRUE(folder.ReadFile(name) == large) << name;
  }
}

TEST_F(UnpackingPackages, APackageThatChangesBeforeALargeMemberIsInflatedAgainIsAFailure) {
  auto members = SmallDriver();
  members.push_back({.name = "large", .content = std::string(std::size_t{50} << 20, 'x')});
  std::string bytes = ArchiveOf(members);
  folder.WriteFile("package.drv", bytes);
  folder.WriteFile("target/driver.inf", "old");
  Package package(SystemPlatform(), folder / "package.drv");
  ASSERT_FALSE(package.Check());
  SystemPlatform()
      .OpenFile(folder / "package.drv", OpenFor::kReadingAndWriting)
      ->WriteAt(bytes.size() / 2, "y");
  try {
    package.Unpack(folder / "target");
    ADD_FAILURE() << "unpacked what was never checked";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), 321);
    EXPECT_THAT(error.Description(), HasSubstr("has changed since it was checked"));
  }
  EXPECT_EQ(Target(), (Tree{{"driver.inf", "old"}}));
}

TEST_F(UnpackingPackages, TheDescriptionCanBeFinishedBeforeAnyFileHasItsName) {
  auto members = SmallDriver();
  members.push_back({.name = "a/driver.inf", .content = "another"});
  folder.WriteFile("package.drv", ArchiveOf(members));
  folder.WriteFile("target/Driver.INF", "old");
  Package package(SystemPlatform(), folder / "package.drv");
  ASSERT_FALSE(package.Check());
  const auto fail = [](File&) { throw RuntimeError(kDiskFull); };
  EXPECT_THROW(package.Unpack(folder / "target", fail), RuntimeError);
  EXPECT_EQ(Target(), (Tree{{"Driver.INF", "old"}}));
  package.Unpack(folder / "target", [&](File& description) {
    EXPECT_EQ(folder.ReadFile("target/Driver.INF"), "old");
    description.WriteAt(description.Size(), "more");
  });
  EXPECT_EQ(Target().at("Driver.INF"), "[driver]\r\nmore");
  EXPECT_EQ(Target().at("a/driver.inf"), "another");
}

TEST_F(UnpackingPackages, FilesOfTheRootCanBeReadBeforeTheyAreUnpacked) {
  auto members = SmallDriver();
  members.push_back({.name = "b.HVD", .content = "b"});
  members.push_back({.name = "A.hvd", .content = "a", .isDeflated = true});
  members.push_back({.name = ".0.hvd", .content = "hidden"});
  members.push_back({.name = "0/0.hvd", .content = "deep"});
  folder.WriteFile("package.drv", ArchiveOf(members));
  Package package(SystemPlatform(), folder / "package.drv");
  EXPECT_EQ(package.FirstRootFile("*.hvd"), "");
  EXPECT_THROW(package.ReadRootFile("A.hvd", 1), RuntimeError);
  ASSERT_FALSE(package.Check());
  EXPECT_EQ(package.FirstRootFile("*.hvd"), "A.hvd");
  EXPECT_EQ(package.FirstRootFile("*.csv"), "");
  EXPECT_EQ(package.ReadRootFile("A.hvd", 1), "a");
  EXPECT_THROW(package.ReadRootFile("A.hvd", 0), RuntimeError);
  EXPECT_THROW(package.ReadRootFile("0.hvd", 10), RuntimeError);
}

TEST_F(UnpackingPackages, FlatPutsEveryFileIntoTheFolderAndTheLastOfANameStays) {
  const std::string bytes = ArchiveOf({{.name = "a/tool.prc", .content = "first"},
                                       {.name = "b/", .content = ""},
                                       {.name = "b/TOOL.prc", .content = "last"},
                                       {.name = "c/d/e.txt", .content = "deep"}});
  folder.WriteFile("package.pkg", bytes);
  Package package(SystemPlatform(), folder / "package.pkg", PackageKind::kHandHeld);
  ASSERT_FALSE(package.Check());
  package.UnpackFlat(folder / "target");
  EXPECT_EQ(Target(), (Tree{{"TOOL.prc", "last"}, {"e.txt", "deep"}}));
}

}  // namespace
}  // namespace tarvo::test
