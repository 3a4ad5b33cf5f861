#include "store_fixture.h"

namespace tarvo::test {
namespace {

// The system ends a killed process's call where a page of the file ends.
constexpr std::size_t kPage = 4096;
struct Killed {};

// Entries that reach over the end of a page at different places of the record.
class CutWriting : public StoreTest, public testing::WithParamInterface<std::size_t> {
 protected:
  static std::size_t Offset() { return (GetParam() - 1) * kRecord; }
  // How much of the value stands on the first page.
  static std::size_t OnFirstPage() {
    constexpr std::size_t kValue = 1026;
    const std::size_t onFirst = kPage - Offset() % kPage;
    return std::min<std::size_t>(onFirst > kValue ? onFirst - kValue : 0, 1024);
  }

  // A file with this record behind others.
  void MakeFile(const std::string& record) {
    std::string bytes = EmptyRecordBytes();
    while (bytes.size() < Offset()) {
      bytes += RecordBytes("Other " + std::to_string(bytes.size()), "theirs");
    }
    WriteBytes(bytes + record);
  }

  // Kills the action in its writing number `writing` of the record; whether it has come to that.
  template <class Action>
  bool IsCut(int writing, Action action) {
    int writings = 0;
    platform.beforeWriting = [&](std::uint64_t offset, std::string_view bytes) {
      if (offset != Offset() || ++writings != writing) return;
      std::string cut = Bytes();
      const std::size_t size = std::min(bytes.size(), kPage - Offset() % kPage);
      cut.resize(std::max(cut.size(), Offset() + size));
      WriteInPlace(cut.replace(Offset(), size, bytes.substr(0, size)));
      throw Killed();
    };
    bool isKilled = false;
    {
      RegistryReplacement killed(platform);
      killed.SetRegistryDataFile(Path());
      try {
        action(killed);
      } catch (const Killed&) {
        isKilled = true;
      }
    }
    platform.beforeWriting = [](auto, auto) {};
    platform.PassSeconds(86400);  // its lock has gone stale
    return isKilled;
  }

  // What can be read when a saving is killed in each of its writings of a record.
  void ExpectOldOrNew(const std::string& record, const std::string& oldValue,
                      const std::string& newValue) {
    bool isCut = true;
    for (int writing = 1; isCut; ++writing) {
      ASSERT_LT(writing, 10);
      MakeFile(record);
      isCut = IsCut(writing, [&](auto& killed) { killed.SaveSetting("Key", newValue); });
      const std::string value = store.GetSetting("Key", "none");
      EXPECT_TRUE(value == oldValue || value == newValue) << writing << ": " << value;
      EXPECT_TRUE(isCut || value == newValue);
      const std::size_t keys = store.EnumEntries().size();
      EXPECT_EQ(keys, GetParam() - 2 + (value == "none" ? 0 : 1));
    }
  }
};

TEST_P(CutWriting, LeavesAllOrNothingOfANewEntryInAFreeRecord) {
  ExpectOldOrNew(EmptyRecordBytes(), "none", std::string(1024, 'n'));
}

class CutValue : public CutWriting {};

TEST_P(CutValue, LeavesAnOldOneThatEndsOnTheFirstPageOrTheNewOne) {
  const std::string old(OnFirstPage() - 1, 'o');
  ExpectOldOrNew(RecordBytes("Key", old), old, std::string(1024, 'n'));
}

TEST_P(CutValue, LeavesALongOldOneOrAShortNewOne) {
  const std::string old(1024, 'o');
  ExpectOldOrNew(RecordBytes("Key", old), old, std::string(OnFirstPage() - 1, 'n'));
}

TEST_P(CutWriting, OfADeletionLeavesNothing) {
  MakeFile(RecordBytes("Key", std::string(1024, 'o')));
  EXPECT_TRUE(IsCut(1, [](auto& killed) { killed.DeleteKey("Key"); }));
  EXPECT_EQ(store.GetSetting("Key", "none"), "none");
  EXPECT_EQ(store.EnumEntries().size(), GetParam() - 2);
}

// The page ends near the end of the value, in its midst, between the fields, and in the key.
INSTANTIATE_TEST_SUITE_P(AtRecord, CutWriting, testing::Values(2, 300, 510, 514, 900),
                         testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(AtRecord, CutValue, testing::Values(2, 300, 510),
                         testing::PrintToStringParamName());

}  // namespace
}  // namespace tarvo::test
