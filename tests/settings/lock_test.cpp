#include "store_fixture.h"

namespace tarvo::test {
namespace {

constexpr double kSecondsPerDay = 86400;

// 12:00 on day 45000; a lock with this time is not stale.
const std::string kForeignLock = RecordBytes("foreign", "45000.5");

class Lock : public StoreTest {
 protected:
  Lock() { store.SaveSetting("K", "old"); }

  // The lock record as it stands while an entry is being written.
  std::string LockDuringSave(RegistryReplacement& saving) {
    std::string lock;
    platform.beforeWriting = [&](std::uint64_t offset, auto) {
      if (offset >= kRecord) lock = Bytes().substr(0, kRecord);
    };
    saving.SaveSetting("K", "new");
    platform.beforeWriting = [](auto, auto) {};
    return lock;
  }
  std::string LockDuringSaveOfNewStore() {
    RegistryReplacement another(platform);
    another.SetRegistryDataFile(Path());
    return LockDuringSave(another);
  }

  // Runs an action before the lock record is read for the `number`-th time from now on.
  void BeforeReadingLock(int number, std::function<void()> action) {
    platform.beforeReading = [this, number, action = std::move(action)](std::uint64_t offset,
                                                                        auto) {
      if (offset < kRecord && ++readingsOfLock_ == number) action();
    };
  }
  int readingsOfLock_ = 0;
};

TEST_F(Lock, HoldsTheOwnerAndTheTimeWhileAnEntryIsWritten) {
  platform.day = 39496;
  platform.secondsOfDay = 45345.67;
  const std::string lock = LockDuringSaveOfNewStore();
  EXPECT_EQ(FirstFieldOf(lock, 1), "4534567");
  EXPECT_EQ(SecondFieldOf(lock, 1), "39496.5248341435");
  EXPECT_EQ(lock, RecordBytes("4534567", "39496.5248341435"));
}

TEST_F(Lock, IsEmptyAfterwards) {
  store.SaveSetting("K", "new");
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("K", "new"));
}

TEST_F(Lock, IdentifiesTheOwnerByTheTimeOfItsMakingNotOfItsWriting) {
  platform.secondsOfDay = 1.234;
  RegistryReplacement another(platform);
  another.SetRegistryDataFile(Path());
  platform.secondsOfDay = 5000;
  EXPECT_EQ(FirstFieldOf(LockDuringSave(another), 1), "123.4");
}

TEST_F(Lock, WritesBothNumbersWithTheLocalesDecimalSign) {
  platform.decimalSign = ",";
  platform.secondsOfDay = 1.234;
  const std::string lock = LockDuringSaveOfNewStore();
  EXPECT_EQ(FirstFieldOf(lock, 1), "123,4");
  EXPECT_EQ(SecondFieldOf(lock, 1).substr(0, 6), "45000,");
}

TEST_F(Lock, WorksWithADecimalSignThatTheCodePageLacks) {
  platform.decimalSign = "٫";
  platform.secondsOfDay = 1.234;
  EXPECT_EQ(FirstFieldOf(LockDuringSaveOfNewStore(), 1), "123?4");
  EXPECT_EQ(store.GetSetting("K", ""), "new");
}

TEST_F(Lock, OfAnotherIsWaitedForAndNothingIsWrittenBefore) {
  WriteInPlace(kForeignLock);
  bool released = false;
  // Finding the entry and opening the file for writing read the lock record too.
  BeforeReadingLock(12, [&] {
    released = true;
    WriteInPlace(EmptyRecordBytes());
  });
  platform.beforeWriting = [&](auto, auto) { EXPECT_TRUE(released); };
  store.SaveSetting("K", "new");
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("K", "new"));
}

TEST_F(Lock, TakenByAnotherBetweenWritingAndReadingBackIsWaitedFor) {
  int ownLocks = 0;
  int foreignReadings = 0;
  bool foreign = false;
  platform.beforeWriting = [&](std::uint64_t offset, std::string_view bytes) {
    EXPECT_FALSE(foreign);
    ownLocks += offset == 0 && bytes != EmptyRecordBytes();
  };
  platform.beforeReading = [&](std::uint64_t offset, auto) {
    if (offset >= kRecord) return;
    if (ownLocks == 1 && foreignReadings == 0) {
      foreign = true;
      WriteInPlace(kForeignLock);
    }
    if (foreign && ++foreignReadings == 10) {
      foreign = false;
      WriteInPlace(EmptyRecordBytes());
    }
  };
  store.SaveSetting("K", "new");
  EXPECT_EQ(ownLocks, 2);
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("K", "new"));
}

TEST_F(Lock, LostToAnotherWhileWritingIsLeftToTheOther) {
  platform.beforeWriting = [&](std::uint64_t offset, auto) {
    if (offset >= kRecord) WriteInPlace(kForeignLock);
  };
  store.SaveSetting("K", "new");
  EXPECT_EQ(Bytes(), kForeignLock + RecordBytes("K", "new"));
}

TEST_F(Lock, IsReleasedOnlyWhenTheWholeOwnerFieldIsTheOwners) {
  const std::string likeOurs = RecordBytes(std::string("4320000\0x", 9), "45000.5");
  platform.beforeWriting = [&](std::uint64_t offset, auto) {
    if (offset >= kRecord) WriteInPlace(likeOurs);
  };
  store.SaveSetting("K", "new");
  EXPECT_EQ(Bytes().substr(0, kRecord), likeOurs);
}

TEST_F(Lock, DoesNotExcludeStoresMadeInTheSameHundredthOfASecond) {
  WriteInPlace(RecordBytes("4320000", "45000.5"));
  store.SaveSetting("K", "new");
  EXPECT_EQ(platform.readingsOfClock, 1 + 2 * 2);  // its making, and no wait in two savings
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("K", "new"));
}

TEST_F(Lock, HasTheTimeAtWhichTheWaitForItBegan) {
  WriteInPlace(kForeignLock);
  platform.secondsPerReading = 0.5;
  std::string lock;
  BeforeReadingLock(20, [&] { WriteInPlace(EmptyRecordBytes()); });
  platform.beforeWriting = [&](std::uint64_t offset, auto) {
    if (offset >= kRecord) lock = Bytes().substr(0, kRecord);
  };
  store.SaveSetting("K", "new");
  const double taken = std::stod(SecondFieldOf(lock, 1));
  EXPECT_LT((taken - 45000.5) * kSecondsPerDay, 2);
  EXPECT_GT((platform.day - 45000.5) * kSecondsPerDay + platform.secondsOfDay, 4);
}

TEST_F(Lock, IsHeededByNoReader) {
  WriteInPlace(kForeignLock);
  EXPECT_EQ(store.GetSetting("K", ""), "old");
  EXPECT_EQ(store.GetSetting("L", "default"), "default");
  EXPECT_EQ(store.EnumEntries(), std::vector<std::string>{"K"});
  EXPECT_EQ(Bytes(), kForeignLock + RecordBytes("K", "old"));
}

TEST_F(Lock, IsNotTakenForBlankingContinuations) {
  store.SaveSetting("K", std::string(1025, 'v'));
  bool blankedUnderLock = false;
  platform.beforeWriting = [&](std::uint64_t offset, auto) {
    if (offset == 2 * kRecord) blankedUnderLock = FirstFieldOf(Bytes(), 1) != "";
  };
  store.SaveSetting("K", "x");
  EXPECT_FALSE(blankedUnderLock);
  EXPECT_EQ(FirstFieldOf(Bytes(), 3), "");
}

TEST_F(Lock, IsTakenBeforeAFreeRecordIsLookedFor) {
  // Another program adds an entry after this one has found none of its key and before it has the
  // lock. Its look for the key and its opening for writing read the lock record once each.
  BeforeReadingLock(3, [&] { WriteInPlace(Bytes() + RecordBytes("Other", "theirs")); });
  store.SaveSetting("New", "ours");
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("K", "old") + RecordBytes("Other", "theirs") +
                         RecordBytes("New", "ours"));
}

}  // namespace
}  // namespace tarvo::test
