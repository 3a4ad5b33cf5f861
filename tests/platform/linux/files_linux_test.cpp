#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <future>
#include <stdexcept>

#include "platform/child_process.h"
#include "platform/contract.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

constexpr OpenFor kBothUses[] = {OpenFor::kReading, OpenFor::kReadingAndWriting};

TEST_P(PlatformContract, NamesOfFilesAreTakenExactly) {
  folder.WriteFile("driver.inf");
  EXPECT_EQ(ErrorOf([&] { platform.OpenFile("Driver.inf", OpenFor::kReading); }), 53);
}

TEST_P(PlatformContract, APipeOrADeviceIsRefusedWithoutWaiting) {
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0666), 0);
  for (const OpenFor use : kBothUses) {
    EXPECT_EQ(ErrorOf([&] { platform.OpenFile("pipe", use); }), 75);
    EXPECT_EQ(ErrorOf([&] { platform.OpenFile("/dev/null", use); }), 75);
  }
}

TEST_P(PlatformContract, LinksToFilesAreFollowed) {
  folder.WriteFile("real", "abc");
  fs::create_symlink("real", folder / "link");
  fs::create_symlink("gone", folder / "broken");
  fs::create_symlink("circle", folder / "circle");
  EXPECT_EQ(platform.OpenFile("link", OpenFor::kReading)->ReadAt(0, 3), "abc");
  EXPECT_EQ(ErrorOf([&] { platform.OpenFile("broken", OpenFor::kReading); }), 53);
  EXPECT_EQ(ErrorOf([&] { platform.OpenFile("circle", OpenFor::kReading); }), 76);
}

TEST_P(PlatformContract, AFileIsClosedWithItsObject) {
  const auto openFiles = [] {
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
  };
  const auto before = openFiles();
  {
    const auto file = platform.OpenFile("file", OpenFor::kReadingAndWriting);
    EXPECT_EQ(openFiles(), before + 1);
  }
  folder.MakeFolder("Data");
  EXPECT_EQ(ErrorOf([&] { platform.OpenFile("Data", OpenFor::kReading); }), 75);
  EXPECT_EQ(openFiles(), before) << "neither a closed nor a refused file stays open";
}

TEST_P(PlatformContract, ThoseWhoAppendAtTheSameTimeDoNotOverwriteEachOther) {
  constexpr std::size_t kSize = 5000;  // more than a page
  constexpr std::size_t kTimes = 1000;
  folder.WriteFile("file");
  const auto append = [&](char letter) {
    const auto file = platform.OpenFile("file", OpenFor::kReadingAndWriting);
    const std::string own(kSize, letter);
    for (std::size_t i = 0; i < kTimes; ++i) {
      const std::uint64_t offset = file->Append(own);
      if (file->ReadAt(offset, kSize) != own)
        throw std::logic_error("it is not where it should be");
    }
  };
  auto one = std::async(std::launch::async, append, '1');
  auto two = std::async(std::launch::async, append, '2');
  EXPECT_NO_THROW(one.get());
  EXPECT_NO_THROW(two.get());
  EXPECT_EQ(folder.ReadFile("file").size(), 2 * kTimes * kSize);
}

TEST_P(PlatformContract, AWriteForWhichThereIsNoRoomSaysDiskFull) {
  EXPECT_EQ(ErrorInChild([&] {
              const rlimit room{10, 10};
              ::setrlimit(RLIMIT_FSIZE, &room);
              ::signal(SIGXFSZ, SIG_IGN);
              platform.OpenFile("file", OpenFor::kReadingAndWriting)->WriteAt(0, "0123456789abc");
            }),
            61);
}

TEST_P(PlatformContract, TooManyOpenFilesAreSaidToBeTooMany) {
  EXPECT_EQ(ErrorInChild([&] {
              const rlimit few{3, 3};
              ::setrlimit(RLIMIT_NOFILE, &few);
              platform.OpenFile("file", OpenFor::kReadingAndWriting);
            }),
            67);
}

}  // namespace
}  // namespace tarvo::test
