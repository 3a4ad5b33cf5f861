#include <sys/resource.h>
#include <sys/stat.h>

#include <algorithm>
#include <climits>
#include <filesystem>
#include <fstream>

#include "platform/child_process.h"
#include "platform/contract.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

// So few files may be open as long as this lives.
class FewOpenFiles {
 public:
  explicit FewOpenFiles(rlim_t most) {
    ::getrlimit(RLIMIT_NOFILE, &before_);
    const rlimit few{most, before_.rlim_max};
    EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
  }
  ~FewOpenFiles() { ::setrlimit(RLIMIT_NOFILE, &before_); }
  FewOpenFiles(const FewOpenFiles&) = delete;
  FewOpenFiles& operator=(const FewOpenFiles&) = delete;

 private:
  rlimit before_{};
};

TEST_P(PlatformContract, HiddenFilesAndFoldersDoNotCount) {
  folder.MakeFolder(".old");
  const auto watch = platform.WatchFolder(folder.Path());
  folder.WriteFile("seen.csv", "x");
  folder.WriteFile(".hidden.csv", "x");
  folder.WriteFile(".old/a.csv", "x");
  folder.WriteFile(".new/a.csv", "x");
  EXPECT_EQ(watch->NewestFile(), folder / "seen.csv");
}

TEST_P(PlatformContract, AWatchDoesNotFollowSymbolicLinks) {
  folder.MakeFolder("outside");
  folder.WriteFile("outside/file", "x");
  folder.MakeFolder("Data");
  fs::create_symlink(folder / "outside", folder / "Data/old link");
  const auto watch = platform.WatchFolder(folder / "Data");
  folder.WriteFile("outside/file", "written");
  folder.WriteFile("outside/new", "x");
  fs::create_symlink(folder / "outside", folder / "Data/link to folder");
  fs::create_symlink(folder / "outside/file", folder / "Data/link to file");
  fs::create_symlink(".", folder / "Data/link to itself");
  fs::create_symlink("nothing", folder / "Data/broken link");
  EXPECT_EQ(watch->NewestFile(), "");
}

TEST_P(PlatformContract, AWatchedFolderMayItselfBeReachedByALink) {
  folder.MakeFolder("real");
  fs::create_symlink("real", folder / "Data");
  const auto watch = platform.WatchFolder(folder / "Data");
  folder.WriteFile("real/a.csv", "x");
  EXPECT_EQ(watch->NewestFile(), folder / "Data/a.csv");
}

TEST_P(PlatformContract, PipesAreNoFiles) {
  const auto watch = platform.WatchFolder(folder.Path());
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0644), 0);
  EXPECT_EQ(watch->NewestFile(), "");
}

TEST_P(PlatformContract, FoldersThatMayNotBeReadAreLeftOut) {
  folder.MakeFolder("secret");
  ASSERT_EQ(::chmod((folder / "secret").c_str(), 0), 0);
  ASSERT_EQ(::chmod(folder.Path().c_str(), 0777), 0);
  EXPECT_EQ(ErrorAsOrdinaryUser([&] {
              const auto watch = platform.WatchFolder(folder.Path());
              std::ofstream(folder / "a.csv") << "x";
              if (watch->NewestFile() != folder / "a.csv") throw RuntimeError(kInternalError);
            }),
            0);
  EXPECT_EQ(ErrorAsOrdinaryUser([&] { platform.WatchFolder(folder / "secret"); }),
            kPermissionDenied);
  ::chmod((folder / "secret").c_str(), 0700);
}

TEST_P(PlatformContract, AWatchReachesPathsLongerThanTheSystemTakes) {
  std::string path = folder.Path();
  while (path.size() <= PATH_MAX + 500) {
    path += "/" + std::string(250, 'n');
    platform.MakeFolder(path);
  }
  const auto watch = platform.WatchFolder(folder.Path());
  platform.OpenFile(path + "/a.csv", OpenFor::kReadingAndWriting)->WriteAt(0, "x");
  EXPECT_EQ(watch->NewestFile(), path + "/a.csv");
  const auto longWatch = platform.WatchFolder(path);
  platform.OpenFile(path + "/b.csv", OpenFor::kReadingAndWriting)->WriteAt(0, "x");
  EXPECT_EQ(longWatch->NewestFile(), path + "/b.csv");
}

TEST_P(PlatformContract, AWatchBearsTreesDeeperThanAProcessMayHaveFoldersOpen) {
  constexpr int kDepth = 240;
  std::string deep = folder.Path();
  for (int i = 0; i < kDepth; ++i) {
    for (const char* name : {"/a", "/b", "/c"}) platform.MakeFolder(deep + name);
    // Others come before and after it, in whatever order they are looked at.
    const std::vector<FolderEntry> entries = platform.Entries(deep);
    deep += "/" + (i % 2 == 0 ? entries.front() : entries.back()).name;
  }
  const FewOpenFiles few(100);
  const auto watch = platform.WatchFolder(folder.Path());
  platform.OpenFile(deep + "/a.csv", OpenFor::kReadingAndWriting)->WriteAt(0, "x");
  EXPECT_EQ(watch->NewestFile(), deep + "/a.csv");
  platform.MakeFolder(deep + "/new");
  platform.OpenFile(deep + "/new/b.csv", OpenFor::kReadingAndWriting)->WriteAt(0, "x");
  EXPECT_EQ(watch->NewestFile(), deep + "/new/b.csv");
}

TEST_P(PlatformContract, TheEndOfAWatchLeavesNothingOpen) {
  const auto countOpen = [] {
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
  };
  folder.WriteFile("a/b/c", "x");
  const auto before = countOpen();
  platform.WatchFolder(folder.Path())->NewestFile();
  EXPECT_EQ(ErrorOf([&] { platform.WatchFolder(folder / "missing"); }), kPathNotFound);
  EXPECT_EQ(countOpen(), before);
}

}  // namespace
}  // namespace tarvo::test
