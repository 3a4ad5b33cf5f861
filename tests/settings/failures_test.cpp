#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "store_fixture.h"

namespace tarvo::test {
namespace {

using Strings = std::vector<std::string>;

std::string RandomBytes(std::size_t size, unsigned seed) {
  std::mt19937 random(seed);
  std::string bytes(size, '\0');
  for (char& byte : bytes) byte = static_cast<char>(random());
  return bytes;
}

using AnyFile = StoreTest;

TEST_F(AnyFile, OfZerosOfAnyLengthTakesAndGivesAValue) {
  for (std::size_t length = 0; length <= 4100; ++length) {
    WriteBytes(std::string(length, '\0'));
    ASSERT_EQ(store.GetSetting("K", "default"), "default") << length;
    ASSERT_EQ(store.EnumEntries(), Strings{}) << length;
    store.SaveSetting("K", "v");
    ASSERT_EQ(store.GetSetting("K", "default"), "v") << length;
    ASSERT_EQ(Records(), 2u) << length;
    ASSERT_EQ(Bytes().substr(0, kRecord), EmptyRecordBytes()) << length;
  }
}

TEST_F(AnyFile, OfRandomBytesOfAnyLengthTakesAndGivesAValue) {
  for (std::size_t length = 3; length <= 4100; ++length) {
    std::string bytes = RandomBytes(length, static_cast<unsigned>(length));
    bytes[2] = '\0';  // unlocked: a lock without a time would be waited for
    WriteBytes(bytes);
    ASSERT_EQ(store.GetSetting("Key", "default"), "default") << length;
    store.EnumEntries();
    store.DeleteKey("Key");
    store.SaveSetting("Key", "v");
    ASSERT_EQ(store.GetSetting("Key", "default"), "v") << length;
  }
}

TEST_F(AnyFile, OfRandomBytesCanBeReadUnderAnyLock) {
  for (std::size_t length = 0; length <= 4100; ++length) {
    WriteBytes(RandomBytes(length, static_cast<unsigned>(length)));
    ASSERT_EQ(ErrorOf([&] { store.SetRegistryDataFile(Path()); }), 0) << length;
    ASSERT_EQ(store.RegistryDataFile(), Path()) << length;
    ASSERT_EQ(store.GetSetting("Key", "default"), "default") << length;
    ASSERT_LE(store.EnumEntries().size(), 1u) << length;
    store.DeleteKey("Key");
  }
}

TEST_F(AnyFile, ThatVanishesIsMadeAgain) {
  store.SaveSetting("K", "v");
  std::filesystem::remove(Path());
  EXPECT_EQ(store.GetSetting("K", "default"), "default");
  EXPECT_EQ(Bytes(), EmptyRecordBytes());
}

TEST_F(AnyFile, ThatShrinksWhileItIsReadReadsAsNulsBeyondItsEnd) {
  std::string bytes = EmptyRecordBytes();
  for (int i = 0; i < 100; ++i) bytes += RecordBytes("Key", "v");
  WriteBytes(bytes);
  platform.beforeReading = [&](std::uint64_t offset, auto) {
    if (offset >= kRecord) std::filesystem::resize_file(Path(), kRecord + 700);
  };
  EXPECT_EQ(store.EnumEntries(), Strings{"Key"});
}

class UnusableFile : public StoreTest {
 protected:
  void ExpectSilence() {
    EXPECT_EQ(store.GetSetting("K", "default"), "default");
    EXPECT_EQ(store.EnumEntries(), Strings{});
    EXPECT_EQ(ErrorOf([&] { store.SaveSetting("K", std::string(3000, 'n')); }), 0);
    EXPECT_EQ(ErrorOf([&] { store.DeleteKey("K"); }), 0);
    EXPECT_EQ(platform.openFiles, 0);
  }
};

TEST_F(UnusableFile, ThatMayNotBeWrittenLeavesEveryDefaultInForce) {
  store.SaveSetting("K", "v");
  const std::string before = Bytes();
  int openings = 0;
  platform.beforeOpening = [&](auto) {
    ++openings;
    throw RuntimeError(kPermissionDenied);
  };
  ExpectSilence();
  EXPECT_EQ(Bytes(), before);
  openings = 0;
  store.SaveSetting("K", "w");
  // Eleven attempts that begin with the look for the key, and the look for "K~2", each look twice.
  EXPECT_EQ(openings, 2 * 11 + 2);
  store.SetRegistryDataFile(Path());
  EXPECT_EQ(store.RegistryDataFile(), "");
  platform.beforeOpening = [](auto) {};
  ExpectSilence();
  EXPECT_EQ(Bytes(), before);
}

// Who would save a default for a value that is only unreadable at the moment would lose it.
TEST_F(UnusableFile, IsToldFromOneWithoutTheKey) {
  EXPECT_EQ(store.KnownSetting("K", "default"), "default");
  store.SaveSetting("K", "");
  EXPECT_EQ(store.KnownSetting("K", "default"), "");
  const std::string value(3000, 'v');
  store.SaveSetting("K", value);
  EXPECT_EQ(store.KnownSetting("k", "default"), value);
  EXPECT_EQ(ErrorOf([&] { store.KnownSetting("K~2", "default"); }), 5);

  platform.beforeReading = [](auto, auto) { throw RuntimeError(kDeviceIoError); };
  EXPECT_EQ(store.KnownSetting("K", "default"), std::nullopt);
  EXPECT_EQ(store.GetSetting("K", "default"), "default");
  platform.beforeReading = [](auto, auto) {};
  platform.beforeOpening = [](auto) { throw RuntimeError(kPermissionDenied); };
  EXPECT_EQ(store.KnownSetting("K", "default"), std::nullopt);
  EXPECT_EQ(store.GetSetting("K", "default"), "default");
}

TEST_F(UnusableFile, MayBeAFolderInItsPlace) {
  std::filesystem::remove(Path());
  folder.MakeFolder("localregistry.dat");
  ExpectSilence();
  store.SetRegistryDataFile(Path());
  EXPECT_EQ(store.RegistryDataFile(), "");
}

TEST_F(UnusableFile, MayBeAPipeInItsPlace) {
  std::filesystem::remove(Path());
  ASSERT_EQ(::mkfifo(Path().c_str(), 0666), 0);
  ExpectSilence();
  store.SetRegistryDataFile(Path());
  EXPECT_EQ(store.RegistryDataFile(), "");
}

TEST_F(UnusableFile, MayBeOneInAFolderThatIsGone) {
  std::filesystem::remove_all(folder.Path());
  ExpectSilence();
}

// The rights of files bind ordinary users only, so a child process becomes one.
TEST_F(UnusableFile, MayBeARealOneThatTheUserMayOnlyRead) {
  store.SaveSetting("K", "v");
  const std::string before = Bytes();
  ASSERT_EQ(::chmod(folder.Path().c_str(), 0755), 0);
  ASSERT_EQ(::chmod(Path().c_str(), 0444), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    constexpr uid_t kNobody = 65534;
    if (::geteuid() == 0 && ::setuid(kNobody) != 0) ::_exit(2);
    RegistryReplacement readOnly(SystemPlatform());
    readOnly.SetRegistryDataFile(Path());
    const bool silent = readOnly.RegistryDataFile().empty() &&
                        readOnly.GetSetting("K", "default") == "default" &&
                        ErrorOf([&] { readOnly.SaveSetting("K", "w"); }) == 0;
    ::_exit(silent ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(Bytes(), before);
}

class FailingFile : public StoreTest {
 protected:
  FailingFile() {
    store.SaveSetting("A", "1");
    store.SaveSetting("K", std::string(2500, 'o'));
    store.SaveSetting("B", "2");
  }

  // Fails the operation number `first` on the file, and all later ones when `everAfter`. Sets
  // `failed` when it has come to that.
  void FailOperation(int first, bool everAfter) {
    failed = false;
    operation_ = 0;
    const auto step = [this, first, everAfter] {
      ++operation_;
      if (operation_ < first || (operation_ > first && !everAfter)) return;
      failed = true;
      throw RuntimeError(kDeviceIoError);
    };
    platform.beforeReading = [step](auto, auto) { step(); };
    platform.beforeWriting = [step](auto, auto) { step(); };
  }

  void StopFailing() {
    platform.beforeReading = [](auto, auto) {};
    platform.beforeWriting = [](auto, auto) {};
    platform.PassSeconds(86400);  // whoever died with the lock has lost it
  }

  std::size_t EntriesOf(std::string_view key) const {
    const std::string bytes = Bytes();
    std::size_t entries = 0;
    for (std::size_t number = 2; number <= Records(); ++number) {
      if (FirstFieldOf(bytes, number) == key) ++entries;
    }
    return entries;
  }

  bool failed = false;

 private:
  int operation_ = 0;
};

TEST_F(FailingFile, LosesNoOtherEntryAtWhateverOperationSavingFails) {
  for (const bool everAfter : {false, true}) {
    failed = true;
    for (int first = 1; failed; ++first) {
      ASSERT_LT(first, 1000);
      FailOperation(first, everAfter);
      EXPECT_EQ(ErrorOf([&] { store.SaveSetting("K", std::string(1500, 'n')); }), 0);
      EXPECT_EQ(platform.openFiles, 0);
      StopFailing();
      EXPECT_EQ(store.GetSetting("A", ""), "1");
      EXPECT_EQ(store.GetSetting("B", ""), "2");
      store.SaveSetting("K", std::string(2500, 'o'));
      EXPECT_EQ(store.GetSetting("K", "").substr(0, 2500), std::string(2500, 'o'));
    }
  }
}

// A second entry would never be read; a missing value is replaced by the default when it is saved.
TEST_F(FailingFile, ThatFailsOnceHasEachKeyOnceAndLosesNoValue) {
  const std::string before = Bytes();
  for (const std::string key : {"A", "New"}) {
    failed = true;
    for (int first = 1; failed; ++first) {
      ASSERT_LT(first, 1000);
      WriteBytes(before);
      FailOperation(first, false);
      store.SaveSetting(key, "new");
      StopFailing();
      EXPECT_EQ(EntriesOf(key), 1U) << key << ", operation " << first;
      EXPECT_EQ(store.GetSetting(key, ""), "new") << "operation " << first;
    }
  }
}

TEST_F(FailingFile, ThatCannotBeOpenedForAMomentGetsNoSecondEntryOfAKey) {
  int openings = 0;
  platform.beforeOpening = [&](auto) {
    if (++openings <= 2) throw RuntimeError(kPermissionDenied);
  };
  store.SaveSetting("A", "new");
  EXPECT_EQ(EntriesOf("A"), 1U);
  EXPECT_EQ(store.GetSetting("A", ""), "new");
}

TEST_F(FailingFile, ThatFailsOnceIsReadAllTheSame) {
  failed = true;
  for (int first = 1; failed; ++first) {
    ASSERT_LT(first, 1000);
    FailOperation(first, false);
    EXPECT_EQ(store.GetSetting("K", "default"), std::string(2500, 'o')) << "operation " << first;
  }
}

TEST_F(FailingFile, KeepsNoPartOfANewEntryThatCouldNotBeWritten) {
  bool failedOnce = false;
  platform.beforeWriting = [&](std::uint64_t offset, std::string_view bytes) {
    if (offset < kRecord || failedOnce) return;
    failedOnce = true;
    std::fstream file(Path(), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(static_cast<std::streamoff>(offset));
    file.write(bytes.data(), 1500);
    file.flush();
    throw RuntimeError(kDiskFull);
  };
  store.SaveSetting("New", "v");
  EXPECT_TRUE(failedOnce);
  EXPECT_EQ(EntriesOf("New"), 1U);
  EXPECT_EQ(store.GetSetting("New", ""), "v");
}

TEST_F(FailingFile, ThatFailsOnceWhileWritingIsWrittenAtTheNextAttempt) {
  bool failedOnce = false;
  platform.beforeWriting = [&](std::uint64_t offset, auto) {
    if (offset < kRecord || failedOnce) return;
    failedOnce = true;
    throw RuntimeError(kDiskFull);
  };
  store.SaveSetting("A", "new");
  EXPECT_TRUE(failedOnce);
  EXPECT_EQ(store.GetSetting("A", ""), "new");
  EXPECT_EQ(FirstFieldOf(Bytes(), 1), "");
}

TEST_F(FailingFile, WhoseDiskIsFullReleasesTheLockAfterEachAttempt) {
  int attempts = 0;
  platform.beforeWriting = [&](std::uint64_t offset, std::string_view bytes) {
    if (offset < kRecord) return;
    if (bytes != EmptyRecordBytes()) ++attempts;
    throw RuntimeError(kDiskFull);
  };
  const std::string before = Bytes();
  store.SaveSetting("New", "v");
  EXPECT_EQ(attempts, 11);
  EXPECT_EQ(Bytes(), before);
}

TEST_F(FailingFile, ThatCannotBeReadGivesTheDefaultAtWhateverOperation) {
  failed = true;
  for (int first = 1; failed; ++first) {
    ASSERT_LT(first, 1000);
    FailOperation(first, true);
    const std::string value = store.GetSetting("K", "default");
    EXPECT_EQ(value, failed ? "default" : std::string(2500, 'o'));
    EXPECT_EQ(ErrorOf([&] { store.DeleteKey("none"); }), 0);
    EXPECT_EQ(ErrorOf([&] { store.EnumEntries(); }), 0);
    EXPECT_EQ(platform.openFiles, 0);
  }
}

TEST_F(FailingFile, WhoseStaleLockCannotBeClearedCanStillBeRead) {
  WriteInPlace(RecordBytes("foreign", "44000.5"));
  platform.beforeWriting = [](auto, auto) { throw RuntimeError(kDeviceIoError); };
  EXPECT_EQ(store.GetSetting("A", "default"), "1");
}

TEST_F(FailingFile, ThatIsEmptyAndCannotGetItsLockRecordIsNotUsed) {
  WriteBytes("");
  platform.beforeWriting = [](auto, auto) { throw RuntimeError(kDiskFull); };
  store.SetRegistryDataFile(Path());
  EXPECT_EQ(store.RegistryDataFile(), "");
  EXPECT_EQ(platform.openFiles, 0);
}

}  // namespace
}  // namespace tarvo::test
