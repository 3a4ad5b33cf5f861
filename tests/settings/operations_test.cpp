#include "settings/data_file.h"
#include "store_fixture.h"

namespace tarvo::test {
namespace {

#ifdef NDEBUG
constexpr bool kTraces = false;
#else
constexpr bool kTraces = true;
#endif

using Operations = StoreTest;

TEST_F(Operations, CloseTheFileEach) {
  int openings = 0;
  platform.beforeOpening = [&](auto) {
    ++openings;
    EXPECT_EQ(platform.openFiles, 0);
  };
  store.SaveSetting("K", "v");
  store.GetSetting("K", "");
  store.EnumEntries();
  store.DeleteKey("K");
  EXPECT_EQ(openings, 3 + 1 + 1 + 1);
  EXPECT_EQ(platform.openFiles, 0);
  store.CloseRegistry();
}

TEST_F(Operations, RefuseARecordOfAnotherLengthAndLeaveTheFileOpen) {
  DataFile file(platform);
  file.SetPath(Path());
  EXPECT_FALSE(file.WriteEntry(0, {"K", std::string(1025, 'v')}));
  EXPECT_EQ(platform.openFiles, 1);
  EXPECT_EQ(Bytes(), EmptyRecordBytes());
  file.CloseDataFile();
  EXPECT_EQ(platform.openFiles, 0);
  EXPECT_FALSE(file.WriteEntry(0, {std::string(1025, 'k'), "v"}));
  EXPECT_TRUE(file.WriteEntry(0, {"K", std::string(1024, 'v')}));
  EXPECT_EQ(platform.openFiles, 0);
}

TEST_F(Operations, DeletingAnEntryExactlyTakesTheFirstOfThatNameOnly) {
  WriteBytes(EmptyRecordBytes() + RecordBytes("k~2", "a") + RecordBytes("K~2", "b") +
             RecordBytes("K~2", "c"));
  DataFile file(platform);
  file.SetPath(Path());
  file.DeleteEntryExact("K~2");
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("k~2", "a") + EmptyRecordBytes() +
                         RecordBytes("K~2", "c"));
}

// What the store writes on standard error while an action runs.
template <class Action>
std::string TraceOf(Action action) {
  testing::internal::CaptureStderr();
  action();
  return testing::internal::GetCapturedStderr();
}

std::string InDebugBuilds(const std::string& text) { return kTraces ? text : ""; }

using Traces = StoreTest;

TEST_F(Traces, TellOfElevenFailedAttempts) {
  EXPECT_EQ(TraceOf([&] { store.SaveSetting("K", "Ω"); }), InDebugBuilds("retries!!\n"));
}

TEST_F(Traces, TellOfAStaleLockThatWasCleared) {
  WriteInPlace(RecordBytes("foreign", "44000.5"));
  EXPECT_EQ(TraceOf([&] { store.GetSetting("K", ""); }), InDebugBuilds("Stale lock cleared!\n"));
}

TEST_F(Traces, TellOfALockThatIsNoLongerOurs) {
  platform.beforeWriting = [&](std::uint64_t offset, auto) {
    if (offset >= kRecord) WriteInPlace(RecordBytes("foreign", "45000.5"));
  };
  EXPECT_EQ(TraceOf([&] { store.SaveSetting("K", "v"); }), InDebugBuilds("lock not ours!\n"));
}

TEST_F(Traces, TellNothingOfOrdinaryWork) {
  EXPECT_EQ(TraceOf([&] {
              store.SaveSetting("K", std::string(2500, 'v'));
              store.SaveSetting("K", "v");
              store.GetSetting("K", "");
              store.DeleteKey("K");
            }),
            "");
}

}  // namespace
}  // namespace tarvo::test
