#include "store_fixture.h"

namespace tarvo::test {
namespace {

// Whether the next opening of the file clears a lock of this time.
class StaleLock : public StoreTest {
 protected:
  bool IsCleared(std::string_view time) {
    const std::string lock = RecordBytes("foreign", time);
    WriteBytes(lock);
    store.GetSetting("K", "");
    const std::string after = Bytes();
    if (after == lock) return false;
    EXPECT_EQ(after, EmptyRecordBytes());
    return true;
  }
};

TEST_F(StaleLock, IsOneOfMoreThan60UnitsOf100000thsOfADay) {
  platform.day = 45000;
  platform.secondsOfDay = 0.5 * 86400;
  EXPECT_FALSE(IsCleared("45000.5"));
  EXPECT_FALSE(IsCleared("45000.499401"));
  EXPECT_TRUE(IsCleared("45000.499399"));
}

TEST_F(StaleLock, IsOneOfAnotherDayHoweverYoung) {
  platform.secondsOfDay = 1;
  EXPECT_FALSE(IsCleared("45000.00001"));
  EXPECT_TRUE(IsCleared("44999.99999"));
  EXPECT_TRUE(IsCleared("45001.00001"));
}

TEST_F(StaleLock, IsNotOneOfLaterOnTheSameDay) { EXPECT_FALSE(IsCleared("45000.9")); }

TEST_F(StaleLock, IsNotOneWithoutATime) { EXPECT_FALSE(IsCleared("")); }

TEST_F(StaleLock, IsOneWhoseTimeIsNoNumber) {
  EXPECT_TRUE(IsCleared("noon"));
  EXPECT_TRUE(IsCleared("1E999"));
  EXPECT_TRUE(IsCleared("-45000.5"));
}

TEST_F(StaleLock, WithADecimalCommaCountsFromMidnight) {
  platform.decimalSign = ",";
  platform.secondsOfDay = 51;
  EXPECT_FALSE(IsCleared("45000,0001"));
  platform.secondsOfDay = 53;
  EXPECT_TRUE(IsCleared("45000,0006"));
}

TEST_F(StaleLock, WithADecimalPointIsReadWellUnderAnyLocale) {
  platform.decimalSign = ",";
  EXPECT_FALSE(IsCleared("45000.5"));
}

TEST_F(StaleLock, IsClearedAlsoWhenItNamesNoOwner) {
  WriteBytes(RecordBytes("", "44000.5"));
  store.GetSetting("K", "");
  EXPECT_EQ(Bytes(), EmptyRecordBytes());
}

TEST_F(StaleLock, IsClearedByEveryOperation) {
  const std::string stale = RecordBytes("foreign", "44000.5");
  const std::function<void()> operations[] = {
      [&] { store.EnumEntries(); },
      [&] { store.DeleteKey("none"); },
      [&] { store.SaveSetting("K", "v"); },
      [&] { store.GetSetting("K", ""); },
      [&] { store.SetRegistryDataFile(Path()); },
  };
  for (const auto& operation : operations) {
    WriteInPlace(stale);
    operation();
    EXPECT_EQ(Bytes().substr(0, kRecord), EmptyRecordBytes());
  }
}

// Waiting for a lock that goes stale meanwhile.
class WaitForStaleLock : public StoreTest {
 protected:
  WaitForStaleLock() { store.SaveSetting("K", "old"); }

  // Saves while another program holds a lock of this time; gives the seconds of the clock that the
  // whole takes.
  double SecondsOfSaving(std::string_view lockTime) {
    WriteInPlace(RecordBytes("foreign", lockTime));
    const double start = platform.Now();
    store.SaveSetting("K", "new");
    EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("K", "new"));
    return (platform.Now() - start) * 86400;
  }
};

TEST_F(WaitForStaleLock, EndsAtTheNextLookAfterItHasGoneStale) {
  platform.secondsPerReading = 0.125;
  const double seconds = SecondsOfSaving("45000.4999");  // 8.64 seconds old
  EXPECT_GT(seconds, 51.84 - 8.64);
  EXPECT_LT(seconds, 51.84 - 8.64 + 7);
}

TEST_F(WaitForStaleLock, LooksOnlyAfterMoreThan5Seconds) {
  platform.secondsPerReading = 0.25;
  int readings = 0;
  double since = 0;
  double until = 0;
  platform.beforeReading = [&](std::uint64_t offset, auto) {
    // The third reading is the first of the wait, behind those of two openings.
    if (offset >= kRecord || ++readings != 3) return;
    WriteInPlace(RecordBytes("foreign", "44000.5"));
    since = platform.secondsOfDay;
  };
  platform.beforeWriting = [&](std::uint64_t offset, auto) {
    if (offset == 0 && until == 0) until = platform.secondsOfDay;
  };
  store.SaveSetting("K", "new");
  EXPECT_GE(until - since, 5);
  EXPECT_LE(until - since, 6);
}

TEST_F(WaitForStaleLock, LooksAgainAfterEvery5Seconds) {
  platform.secondsPerReading = 0.25;
  WriteInPlace(RecordBytes("foreign", "45000.9"));
  // Now is read at every look, besides the clock of the wait; the lock is released after 31
  // seconds.
  int readingsOfNow = 0;
  platform.atReadingNow = [&] {
    ++readingsOfNow;
    if (platform.secondsOfDay > 12 * 3600 + 31) WriteInPlace(EmptyRecordBytes());
  };
  store.SaveSetting("K", "new");
  // Two openings, the lock's own time, looks after 5 to 6 seconds each, and the opening of the
  // search for continuations finds no lock.
  EXPECT_GE(readingsOfNow, 3 + 31 / 6);
  EXPECT_LE(readingsOfNow, 3 + 36 / 5);
}

TEST_F(WaitForStaleLock, EndsAfterMidnight) {
  platform.secondsOfDay = 86398;
  platform.secondsPerReading = 0.25;
  const double seconds = SecondsOfSaving("45000.99997");
  EXPECT_GT(seconds, 2);
  EXPECT_LT(seconds, 10);
}

TEST_F(WaitForStaleLock, HasNoEndForALockWithoutATimeUntilItIsReleased) {
  platform.secondsPerReading = 10;
  int readings = 0;
  platform.beforeReading = [&](std::uint64_t offset, auto) {
    if (offset < kRecord && ++readings == 30'000) WriteInPlace(EmptyRecordBytes());
  };
  EXPECT_GT(SecondsOfSaving(""), 86400);
}

}  // namespace
}  // namespace tarvo::test
