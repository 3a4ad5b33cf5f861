#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "base/runtime_error.h"
#include "child_process.h"
#include "file_times.h"
#include "platform/platform.h"
#include "support/temporary_folder.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

// From now on a system call of this process fails with an error.
void Forbid(unsigned call, int error) {
  const auto code = static_cast<unsigned>(error);
  sock_filter steps[] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call, 0, 1),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | code),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
  };
  const sock_fprog program{std::size(steps), steps};
  if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
      ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0) {
    throw std::runtime_error("cannot forbid a system call");
  }
}

// A way in which the system gives no notices.
struct Lack {
  const char* name;
  unsigned call;
  int error;
};

void PrintTo(const Lack& lack, std::ostream* output) { *output << lack.name; }

// A watch on a system that gives no notices at all.
class WatchWithoutNotices : public ::testing::TestWithParam<Lack> {
 protected:
  // The newest file that a watch tells of after the steps, from the watched folder.
  std::string NewestAfter(const std::function<void()>& steps) {
    const std::string answer = answers_ / "answer";
    const int error = ErrorInChild([&] {
      Forbid(GetParam().call, GetParam().error);
      const auto watch = SystemPlatform().WatchFolder(folder.Path());
      steps();
      std::ofstream(answer) << watch->NewestFile();
    });
    EXPECT_EQ(error, 0);
    const std::string path = ReadFileAt(answer);
    return path.starts_with(folder.Path()) ? path.substr(folder.Path().size() + 1) : path;
  }

  const TemporaryFolder folder;

 private:
  const TemporaryFolder answers_;
};

TEST_P(WatchWithoutNotices, FindsNothingWhenNothingIsWritten) {
  folder.WriteFile("old.csv", "x");
  folder.WriteFile("Data/older.csv", "x");
  EXPECT_EQ(NewestAfter([] {}), "");
}

TEST_P(WatchWithoutNotices, FindsNothingWhenFilesAreOnlyLookedAtAndFoldersRenamed) {
  folder.WriteFile("old.csv", "x");
  folder.WriteFile("Data/older.csv", "x");
  EXPECT_EQ(NewestAfter([&] {
              fs::permissions(folder / "old.csv", fs::perms(0600));
              fs::rename(folder / "Data", folder / "Data before");
            }),
            "");
}

TEST_P(WatchWithoutNotices, FindsFilesThatAreMadeAndFilesThatAreWritten) {
  folder.WriteFile("Data/old.csv", "x");
  EXPECT_EQ(NewestAfter([&] { folder.WriteFile("Data/new.csv", "x"); }), "Data/new.csv");
  WaitForLaterFileTime();
  EXPECT_EQ(NewestAfter([&] { folder.WriteFile("Data/old.csv", "y"); }), "Data/old.csv");
}

TEST_P(WatchWithoutNotices, FindsTheFileWrittenLastByItsTime) {
  EXPECT_EQ(NewestAfter([&] {
              folder.WriteFile("z.csv", "x");
              WaitForLaterFileTime();
              folder.WriteFile("Data/m.csv", "x");
              WaitForLaterFileTime();
              folder.WriteFile("a.csv", "x");
            }),
            "a.csv");
}

TEST_P(WatchWithoutNotices, FindsAFileThatIsWrittenWithATimeBeforeOrAfterTheWatch) {
  for (const int year : {1990, 2090}) {
    EXPECT_EQ(NewestAfter([&] {
                folder.WriteFile("early.csv", "x");
                SetTime(folder / "early.csv", 2091);
                WaitForLaterFileTime();
                folder.WriteFile("late.csv", "x");
                SetTime(folder / "late.csv", year);
              }),
              "late.csv");
    fs::remove(folder / "early.csv");
    fs::remove(folder / "late.csv");
  }
}

TEST_P(WatchWithoutNotices, FindsAFileThatIsReplacedByOneOfTheSameSizeAndTime) {
  const std::string path = folder.WriteFile("old.csv", "one");
  SetTime(path, 2001);
  WaitForLaterFileTime();
  EXPECT_EQ(NewestAfter([&] {
              SetTime(folder.WriteFile("old.csv.tmp", "two"), 2001);
              fs::rename(folder / "old.csv.tmp", path);
            }),
            "old.csv");
}

TEST_P(WatchWithoutNotices, ForgetsAFileThatIsGoneAgain) {
  EXPECT_EQ(NewestAfter([&] {
              folder.WriteFile("kept.csv", "x");
              WaitForLaterFileTime();
              fs::remove(folder.WriteFile("lock", "x"));
            }),
            "kept.csv");
}

const Lack kLacks[] = {
    {"BecauseThereAreTooManyWatchers", __NR_inotify_init1, EMFILE},
    {"BecauseTooManyFoldersAreWatched", __NR_inotify_add_watch, ENOSPC},
};

INSTANTIATE_TEST_SUITE_P(Every, WatchWithoutNotices, ::testing::ValuesIn(kLacks),
                         [](const auto& lack) { return std::string(lack.param.name); });

// How many notices wait for a reader before the system drops them.
int MostWaitingNotices() {
  int most = 0;
  std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> most;
  return most;
}

TEST(WatchThatLosesNotices, GoesByTheTimesOfTheFiles) {
  const int most = MostWaitingNotices();
  if (most > 500000) GTEST_SKIP() << "the system keeps " << most << " notices";
  ASSERT_GT(most, 0);
  const TemporaryFolder folder;
  std::ofstream one(folder / "one");
  std::ofstream two(folder / "two");
  // The last notice that is kept is of one of the two.
  for (const char* last : {"one", "two", "new"}) {
    const auto watch = SystemPlatform().WatchFolder(folder.Path());
    // Notices alike that follow each other are given as one.
    for (int i = 0; i <= most; ++i) (i % 2 == 0 ? one : two) << 'x' << std::flush;
    WaitForLaterFileTime();
    folder.WriteFile(last, "x");
    EXPECT_EQ(watch->NewestFile(), folder / last);
  }
}

}  // namespace
}  // namespace tarvo::test
