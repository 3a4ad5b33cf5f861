#include "store_fixture.h"

namespace tarvo::test {
namespace {

// 12:00 on day 45000; a lock with this time is not stale.
const std::string kForeignLock = RecordBytes("foreign", "45000.5");
const std::string kFree = EmptyRecordBytes();

// What another program does between two steps of this one.
class SecondLook : public StoreTest {
 protected:
  SecondLook() {
    store.SaveSetting("A", "1");
    store.SaveSetting("K", "old");
  }

  bool IsLocked() const { return FirstFieldOf(Bytes(), 1) == "4320000"; }

  // Acts when a record is read for the `time`-th time under this store's lock: the lock record is
  // read back when it has been taken, then looked at again, then for its release.
  void BeforeReadingUnderLock(std::size_t record, int time, std::function<void()> action) {
    platform.beforeReading = [this, record, time, readings = 0, action = std::move(action)](
                                 std::uint64_t offset, std::size_t count) mutable {
      const bool isRead = offset < record * kRecord && offset + count > (record - 1) * kRecord;
      if (isRead && IsLocked() && ++readings == time) action();
    };
  }

  // Acts when the store has released its lock, before it reads anything else.
  void AfterRelease(std::function<void()> action) {
    platform.beforeWriting = [this](std::uint64_t offset, auto bytes) {
      isReleased_ = offset == 0 && bytes == kFree;
    };
    platform.beforeReading = [this, action = std::move(action)](auto, auto) {
      if (std::exchange(isReleased_, false)) action();
    };
  }

  std::string Record(std::size_t number) const {
    return Bytes().substr((number - 1) * kRecord, kRecord);
  }

  // Puts an entry into a record, as a program that has the lock as well does.
  void Put(std::size_t number, const std::string& record) {
    std::string bytes = Bytes();
    bytes.resize(std::max(bytes.size(), number * kRecord));
    WriteInPlace(bytes.replace((number - 1) * kRecord, kRecord, record));
  }

 private:
  bool isReleased_ = false;
};

constexpr int kReadBack = 1;
constexpr int kLookedAt = 2;

TEST_F(SecondLook, SeesThatAnotherHasTheLockAndWaitsBeforeItWrites) {
  int ownReadings = 0;
  int foreignReadings = 0;
  bool isForeign = false;
  platform.beforeReading = [&](std::uint64_t offset, auto) {
    if (offset >= kRecord) return;
    if (IsLocked() && ++ownReadings == kLookedAt) {
      isForeign = true;
      Put(1, kForeignLock);
    } else if (isForeign && ++foreignReadings == 10) {
      isForeign = false;
      Put(1, kFree);
    }
  };
  platform.beforeWriting = [&](auto, auto) { EXPECT_FALSE(isForeign); };
  store.SaveSetting("New", "ours");
  EXPECT_EQ(foreignReadings, 10);
  EXPECT_EQ(Bytes(),
            kFree + RecordBytes("A", "1") + RecordBytes("K", "old") + RecordBytes("New", "ours"));
}

TEST_F(SecondLook, SeesThatTheLockHasBeenClearedAndTakesItAgain) {
  int takings = 0;
  BeforeReadingUnderLock(1, kLookedAt, [&] { Put(1, kFree); });
  platform.beforeWriting = [&](std::uint64_t offset, auto bytes) {
    takings += offset == 0 && bytes != kFree;
    EXPECT_TRUE(offset == 0 || IsLocked());
  };
  store.SaveSetting("K", "new");
  EXPECT_EQ(takings, 2);
  EXPECT_EQ(Bytes(), kFree + RecordBytes("A", "1") + RecordBytes("K", "new"));
}

TEST_F(SecondLook, SeesThatTheFreeRecordHasBeenFilledAndChoosesAnother) {
  store.DeleteKey("A");
  BeforeReadingUnderLock(1, kLookedAt, [&] { Put(2, RecordBytes("Other", "theirs")); });
  store.SaveSetting("New", "ours");
  EXPECT_EQ(Bytes(), kFree + RecordBytes("Other", "theirs") + RecordBytes("K", "old") +
                         RecordBytes("New", "ours"));
}

TEST_F(SecondLook, SeesThatARecordHasBeenAddedAtTheEndAndGoesBehindIt) {
  BeforeReadingUnderLock(1, kLookedAt, [&] { Put(4, RecordBytes("Other", "theirs")); });
  store.SaveSetting("New", "ours");
  EXPECT_EQ(Record(4), RecordBytes("Other", "theirs"));
  EXPECT_EQ(Record(5), RecordBytes("New", "ours"));
}

TEST_F(SecondLook, IsNotNeededByAnEntryThatIsAddedAtTheEndRightBehindAnothers) {
  BeforeReadingUnderLock(4, 1, [&] { Put(4, RecordBytes("Other", "theirs")); });
  store.SaveSetting("New", "ours");
  EXPECT_EQ(Record(4), RecordBytes("Other", "theirs"));
  EXPECT_EQ(Record(5), RecordBytes("New", "ours"));
  EXPECT_EQ(Records(), 5u);
}

TEST_F(SecondLook, SeesThatTheSameKeyHasBeenAddedMeanwhileAndMakesNoSecondRecord) {
  BeforeReadingUnderLock(1, kLookedAt, [&] { Put(4, RecordBytes("NEW", "theirs")); });
  store.SaveSetting("New", "ours");
  EXPECT_EQ(Record(4), RecordBytes("New", "ours"));
  EXPECT_EQ(Records(), 4u);
}

TEST_F(SecondLook, SeesThatTheKeysRecordIsAnothersNowAndLeavesItAlone) {
  BeforeReadingUnderLock(1, kReadBack, [&] { Put(3, RecordBytes("Other", "theirs")); });
  store.SaveSetting("K", "new");
  EXPECT_EQ(Bytes(), kFree + RecordBytes("A", "1") + RecordBytes("Other", "theirs") +
                         RecordBytes("K", "new"));
}

TEST_F(SecondLook, FindsTheKeyWhereAnotherHasSavedItAnew) {
  BeforeReadingUnderLock(1, kReadBack, [&] {
    Put(3, RecordBytes("Other", "theirs"));
    Put(4, RecordBytes("k", "theirs"));
  });
  store.SaveSetting("K", "new");
  EXPECT_EQ(Bytes(), kFree + RecordBytes("A", "1") + RecordBytes("Other", "theirs") +
                         RecordBytes("K", "new"));
}

TEST_F(SecondLook, LetsTheKeyHaveItsRecordBackWhenThatHasBeenFreed) {
  BeforeReadingUnderLock(1, kReadBack, [&] { Put(3, kFree); });
  store.SaveSetting("K", "new");
  EXPECT_EQ(Bytes(), kFree + RecordBytes("A", "1") + RecordBytes("K", "new"));
}

TEST_F(SecondLook, EndsWhenTheLockIsLostEverAgain) {
  platform.beforeReading = [&](std::uint64_t offset, auto) {
    if (offset >= kRecord && IsLocked()) Put(1, kFree);
  };
  store.SaveSetting("K", "new");
  EXPECT_EQ(store.GetSetting("K", ""), "new");
}

TEST_F(SecondLook, SeesAfterTheReleaseThatANewRecordHasBecomeAnothersAndSavesAgain) {
  int times = 0;
  AfterRelease([&] {
    if (++times == 1) Put(4, RecordBytes("Other", "theirs"));
  });
  store.SaveSetting("New", "ours");
  EXPECT_EQ(times, 2);
  EXPECT_EQ(Bytes(), kFree + RecordBytes("A", "1") + RecordBytes("K", "old") +
                         RecordBytes("Other", "theirs") + RecordBytes("New", "ours"));
}

TEST_F(SecondLook, SavesAtMostElevenTimesWhenItsRecordIsEverAnothers) {
  std::size_t times = 0;
  AfterRelease([&] {
    ++times;
    Put(3 + times, RecordBytes("Other " + std::to_string(times), "theirs"));
  });
  store.SaveSetting("New", "ours");
  EXPECT_EQ(times, 11u);
  EXPECT_EQ(Records(), 3u + 11);
  EXPECT_EQ(store.GetSetting("New", "default"), "default");
}

TEST_F(SecondLook, DoesNotBringBackANewKeyThatHasBeenDeletedAtOnce) {
  int times = 0;
  AfterRelease([&] {
    ++times;
    Put(4, kFree);
  });
  store.SaveSetting("New", "ours");
  EXPECT_EQ(times, 1);
  EXPECT_EQ(store.GetSetting("New", "default"), "default");
}

TEST_F(SecondLook, IsNotTakenAtAnExistingKeyAfterItsRelease) {
  AfterRelease([&] { Put(3, RecordBytes("Other", "theirs")); });
  store.SaveSetting("K", "new");
  EXPECT_EQ(Bytes(), kFree + RecordBytes("A", "1") + RecordBytes("Other", "theirs"));
}

TEST_F(SecondLook, PrecedesEveryDeletion) {
  for (const bool exactly : {false, true}) {
    // The search has read both records when the second of them is looked at again.
    int readings = 0;
    store.SaveSetting("Long", std::string(1025, 'v'));
    const std::size_t end = Records();
    platform.beforeReading = [&](std::uint64_t offset, auto) {
      if (offset != (end - 1) * kRecord + 2 || ++readings > 1) return;
      Put(end, RecordBytes("Other", "theirs"));
    };
    if (exactly) {
      store.SaveSetting("Long", "short");
    } else {
      store.DeleteKey("Long");
    }
    platform.beforeReading = [](auto, auto) {};
    EXPECT_EQ(Record(end), RecordBytes("Other", "theirs"));
    store.DeleteKey("Other");
  }
}

TEST_F(SecondLook, TellsALockFromThatOfANamesakeByItsTime) {
  const std::string namesakes = RecordBytes("4320000", "45000.4999");
  int readings = 0;
  bool isNamesakes = true;
  Put(1, namesakes);
  platform.beforeReading = [&](std::uint64_t offset, auto) {
    if (!isNamesakes || offset >= kRecord || ++readings < 20) return;
    isNamesakes = false;
    Put(1, kFree);
  };
  platform.beforeWriting = [&](auto, auto) { EXPECT_FALSE(isNamesakes); };
  store.SaveSetting("K", "new");
  EXPECT_EQ(readings, 20);
  EXPECT_EQ(Bytes(), kFree + RecordBytes("A", "1") + RecordBytes("K", "new"));
}

TEST_F(SecondLook, WaitsForANamesakeForLittleMoreThan5Seconds) {
  Put(1, RecordBytes("4320000", "45000.4999"));
  platform.secondsPerReading = 0.125;
  const double start = platform.secondsOfDay;
  store.SaveSetting("K", "new");
  EXPECT_GT(platform.secondsOfDay - start, 5);
  EXPECT_LT(platform.secondsOfDay - start, 7);
  EXPECT_EQ(Bytes(), kFree + RecordBytes("A", "1") + RecordBytes("K", "new"));
}

TEST_F(SecondLook, KnowsALockThatItHasFailedToReleaseAsItsOwn) {
  bool failsToRelease = true;
  platform.beforeWriting = [&](std::uint64_t offset, auto bytes) {
    if (failsToRelease && offset == 0 && bytes == kFree) throw RuntimeError(kDeviceIoError);
  };
  store.SaveSetting("K", "new");
  EXPECT_TRUE(IsLocked());
  failsToRelease = false;
  platform.PassSeconds(1);
  store.SaveSetting("K", "newer");
  EXPECT_EQ(Bytes(), kFree + RecordBytes("A", "1") + RecordBytes("K", "newer"));
}

class SecondReading : public SecondLook {};

TEST_F(SecondReading, OfAValueThatIsBeingWrittenGivesItWhole) {
  const std::string written = RecordBytes("K", std::string(1000, 'n'));
  std::string half = written;
  for (std::size_t i = 1500; i < half.size(); ++i) half[i] = i < 1526 ? 'o' : '\0';
  Put(3, half);
  platform.beforeReading = [&](std::uint64_t offset, auto) {
    if (offset == 2 * kRecord + 2) Put(3, written);
  };
  EXPECT_EQ(store.GetSetting("K", ""), std::string(1000, 'n'));
}

TEST_F(SecondReading, GivesNoValueOfAnotherKey) {
  platform.beforeReading = [&](std::uint64_t offset, auto) {
    if (offset == 2 * kRecord + 2) Put(3, RecordBytes("Other", "theirs"));
  };
  EXPECT_EQ(store.GetSetting("K", ""), "old");
}

TEST_F(SecondReading, EndsWhenTheValueIsNeverTheSame) {
  int readings = 0;
  platform.beforeReading = [&](std::uint64_t offset, auto) {
    if (offset == 2 * kRecord + 2) Put(3, RecordBytes("K", std::to_string(++readings)));
  };
  const std::string value = store.GetSetting("K", "");
  EXPECT_EQ(value, "100");
  EXPECT_EQ(readings, 100);
}

}  // namespace
}  // namespace tarvo::test
