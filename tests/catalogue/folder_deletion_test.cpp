#include "catalogue/folder_deletion.h"

#include <sys/stat.h>

#include "base/runtime_error.h"
#include "support/program_run.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::Not;

class DeletingAFolderTree : public ProgramRun {
 protected:
  void Delete(const std::string& name) { DeleteFolderTree(platform, frontEnd, folder / name); }

  int ErrorOfDeleting(const std::string& name) {
    try {
      Delete(name);
      return 0;
    } catch (const RuntimeError& error) {
      return error.Number();
    }
  }

  bool Exists(const std::string& name) const {
    return fs::exists(fs::symlink_status(folder / name));
  }
  void Link(const std::string& target, const std::string& name) const {
    fs::create_symlink(target, folder / name);
  }
  void SetMode(const std::string& name, unsigned mode) const {
    fs::permissions(folder / name, static_cast<fs::perms>(mode));
  }
};

TEST_F(DeletingAFolderTree, RemovesEveryFileAndFolderHiddenOnesToo) {
  folder.WriteFile("tree/a");
  folder.WriteFile("tree/.hidden");
  folder.WriteFile("tree/deep/er/b.csv");
  folder.WriteFile("tree/.hidden folder/c");
  folder.MakeFolder("tree/empty");
  Delete("tree");
  EXPECT_FALSE(Exists("tree"));
}

TEST_F(DeletingAFolderTree, RemovesFilesOfEveryNameThatAFolderCanHold) {
  folder.WriteFile("tree/no dot");
  folder.WriteFile("tree/quote'\"\\");
  folder.WriteFile("tree/line\nend");
  folder.WriteFile("tree/*");
  folder.WriteFile("tree/not UTF-8 \xFF");
  folder.WriteFile("outside");
  Delete("tree");
  EXPECT_FALSE(Exists("tree"));
  EXPECT_TRUE(Exists("outside"));
}

// Two hundred links: to files and folders outside, to each other, upward, to nothing.
TEST_F(DeletingAFolderTree, RemovesLinksAsSuchAndTouchesNothingThatTheyLeadTo) {
  folder.WriteFile("outside/folder/kept", "kept");
  folder.WriteFile("outside/read-only", "kept");
  SetMode("outside/read-only", 0444);
  folder.MakeFolder("tree/sub");
  for (int i = 0; i < 40; ++i) {
    const std::string number = std::to_string(i);
    const std::string below = i % 2 == 0 ? "tree/" : "tree/sub/";
    Link(folder / "outside/read-only", below + "file" + number);
    Link(folder / "outside/folder", below + "folder" + number);
    Link(folder / "tree", below + "up" + number);
    Link("loop" + number, below + "loop" + number);
    Link(folder / "nowhere", below + "broken" + number);
  }
  Delete("tree");
  EXPECT_FALSE(Exists("tree"));
  EXPECT_EQ(folder.ReadFile("outside/folder/kept"), "kept");
  EXPECT_EQ(folder.ReadFile("outside/read-only"), "kept");
  EXPECT_EQ(fs::status(folder / "outside/read-only").permissions(), fs::perms(0444));
}

TEST_F(DeletingAFolderTree, RemovesAFolderThatIsALinkAsALink) {
  folder.WriteFile("outside/kept");
  Link(folder / "outside", "tree");
  Delete("tree");
  EXPECT_FALSE(Exists("tree"));
  EXPECT_TRUE(Exists("outside/kept"));
}

TEST_F(DeletingAFolderTree, RemovesAFifoWithoutOpeningIt) {
  folder.MakeFolder("tree");
  ASSERT_EQ(::mkfifo((folder / "tree/pipe").c_str(), 0600), 0);
  Delete("tree");
  EXPECT_FALSE(Exists("tree"));
}

// Attributes are not reset here: what is protected below the driver's own folder stays protected.
TEST_F(DeletingAFolderTree, LeavesReadOnlyFilesAndFailsOnTheirFolder) {
  folder.WriteFile("tree/data/locked.csv", "kept");
  folder.WriteFile("tree/data/free.csv");
  folder.WriteFile("tree/first/gone");
  folder.WriteFile("tree/top");
  SetMode("tree/data/locked.csv", 0444);
  EXPECT_EQ(ErrorOfDeleting("tree"), kPathFileAccessError);
  EXPECT_EQ(folder.ReadFile("tree/data/locked.csv"), "kept");
  EXPECT_EQ(fs::status(folder / "tree/data/locked.csv").permissions(), fs::perms(0444));
  EXPECT_FALSE(Exists("tree/data/free.csv"));
  EXPECT_TRUE(Exists("tree/top")) << "an error below abandons what would come after";
}

TEST_F(DeletingAFolderTree, TakesNoFileInAFolderAsNoError) {
  folder.MakeFolder("tree/Data");
  Delete("tree");
  EXPECT_FALSE(Exists("tree"));
}

TEST_F(DeletingAFolderTree, BearsAHundredAndOneSubfolders) {
  for (int i = 0; i < 101; ++i) folder.WriteFile("tree/" + std::to_string(i) + "/file");
  Delete("tree");
  EXPECT_FALSE(Exists("tree"));
}

TEST_F(DeletingAFolderTree, FailsWithASubscriptErrorBeyond101SubfoldersBeforeItRemovesAnything) {
  for (int i = 0; i < 102; ++i) folder.WriteFile("tree/" + std::to_string(i) + "/file");
  folder.WriteFile("tree/file");
  EXPECT_EQ(ErrorOfDeleting("tree"), kSubscriptOutOfRange);
  EXPECT_TRUE(Exists("tree/file"));
  for (int i = 0; i < 102; ++i) EXPECT_TRUE(Exists("tree/" + std::to_string(i) + "/file"));
}

TEST_F(DeletingAFolderTree, FailsForAFolderThatIsNotThere) {
  EXPECT_EQ(ErrorOfDeleting("missing"), kPathNotFound);
}

TEST_F(DeletingAFolderTree, RemovesAsManyLevelsAsAWalkBears) {
  std::string deep = "tree";
  folder.MakeFolder(deep);
  fs::current_path(folder / deep);
  for (int level = 0; level < 1500; ++level) {
    fs::create_directory("level");
    fs::current_path("level");
  }
  fs::current_path(folder.Path());
  Delete("tree");
  EXPECT_FALSE(Exists("tree"));
}

// The innermost folder's end shows the default pointer though the outer ones are being removed.
TEST_F(DeletingAFolderTree, ShowsTheHourglassFromTheStartOfEachFolder) {
  folder.MakeFolder("tree/a");
  Delete("tree");
  EXPECT_THAT(frontEnd.pointers, ElementsAre(kHourglassPointer, kDefaultPointer));
  EXPECT_EQ(frontEnd.MousePointer(), kDefaultPointer);
}

TEST_F(DeletingAFolderTree, ShowsTheDefaultPointerAfterAFailure) {
  folder.WriteFile("tree/data/locked");
  SetMode("tree/data/locked", 0444);
  ErrorOfDeleting("tree");
  EXPECT_EQ(frontEnd.MousePointer(), kDefaultPointer);
}

}  // namespace
}  // namespace tarvo::test
