#include <sys/wait.h>
#include <unistd.h>

#include <vector>

#include "store_fixture.h"

namespace tarvo::test {
namespace {

constexpr int kProcesses = 2;
constexpr int kKeys = 20;
constexpr int kRounds = 25;

std::string Key(int process, int key) {
  return "Process " + std::to_string(process) + " key " + std::to_string(key);
}

// A full field of one letter, another in each round: a torn write would mix two.
std::string Value(int key, int round) {
  return std::string(1024, static_cast<char>('A' + (key + round) % 26));
}

// What one of the processes does; its exit code is the number of values that it read back wrongly.
int SaveOver(const std::string& path, int process) {
  RegistryReplacement store(SystemPlatform());
  store.SetRegistryDataFile(path);
  int wrong = 0;
  for (int round = 1; round <= kRounds; ++round) {
    for (int key = 0; key < kKeys; ++key) {
      store.SaveSetting(Key(process, key), Value(key, round));
      wrong += store.GetSetting(Key(process, key), "") != Value(key, round);
    }
  }
  return wrong;
}

using Sharing = StoreTest;

TEST_F(Sharing, ProcessesThatSaveTheirOwnKeysAtTheSameTimeLoseAndTearNothing) {
  for (int process = 0; process < kProcesses; ++process) {
    for (int key = 0; key < kKeys; ++key) store.SaveSetting(Key(process, key), Value(key, 0));
  }
  int start[2];
  ASSERT_EQ(::pipe(start), 0);
  std::vector<pid_t> children;
  for (int process = 0; process < kProcesses; ++process) {
    const pid_t child = ::fork();
    if (child == 0) {
      // Both begin when the last writing end of the pipe is closed.
      char nothing;
      ::close(start[1]);
      const bool told = ::read(start[0], &nothing, 1) == 0;
      ::_exit(told ? SaveOver(Path(), process) : 255);
    }
    ASSERT_GT(child, 0);
    children.push_back(child);
  }
  ::close(start[0]);
  ::close(start[1]);
  for (const pid_t child : children) {
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }
  for (int process = 0; process < kProcesses; ++process) {
    for (int key = 0; key < kKeys; ++key) {
      EXPECT_EQ(store.GetSetting(Key(process, key), ""), Value(key, kRounds));
    }
  }
  EXPECT_EQ(Bytes().size(), kRecord * (1 + kProcesses * kKeys));
  EXPECT_EQ(store.EnumEntries().size(), static_cast<std::size_t>(kProcesses * kKeys));
}

}  // namespace
}  // namespace tarvo::test
