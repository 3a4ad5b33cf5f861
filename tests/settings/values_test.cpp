#include "store_fixture.h"

namespace tarvo::test {
namespace {

using Values = StoreTest;

TEST_F(Values, OfAMissingKeyAreTheDefaultUnchanged) {
  EXPECT_EQ(store.GetSetting("K", "default"), "default");
  EXPECT_EQ(store.GetSetting("K", ""), "");
  EXPECT_EQ(store.GetSetting("K", "Ω and more"), "Ω and more");
  EXPECT_EQ(Bytes(), EmptyRecordBytes());
}

TEST_F(Values, StoredAsNothingAreReturnedAsNothing) {
  store.SaveSetting("K", "");
  EXPECT_EQ(store.GetSetting("K", "default"), "");
  EXPECT_EQ(Records(), 2u);
}

TEST_F(Values, SurviveTheStoreObject) {
  store.SaveSetting("K", "v");
  RegistryReplacement another(platform);
  another.SetRegistryDataFile(Path());
  EXPECT_EQ(another.GetSetting("K", ""), "v");
}

TEST_F(Values, Of2500CharactersTakeThreeRecords) {
  const std::string value = std::string(1024, 'a') + std::string(1024, 'b') + std::string(452, 'c');
  store.SaveSetting("K", value);
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("K", std::string(1024, 'a')) +
                         RecordBytes("K~2", std::string(1024, 'b')) +
                         RecordBytes("K~3", std::string(452, 'c')));
  EXPECT_EQ(store.GetSetting("K", ""), value);
}

TEST_F(Values, ThatBecomeShorterLeaveNoContinuations) {
  store.SaveSetting("K", std::string(2500, 'v'));
  store.SaveSetting("K", "x");
  EXPECT_EQ(Bytes(),
            EmptyRecordBytes() + RecordBytes("K", "x") + EmptyRecordBytes() + EmptyRecordBytes());
  EXPECT_EQ(store.GetSetting("K", ""), "x");
}

TEST_F(Values, ThatBecomeShorterKeepTheContinuationsTheyStillNeed) {
  store.SaveSetting("K", std::string(4096, 'v'));
  store.SaveSetting("K", std::string(2048, 'w'));
  EXPECT_EQ(store.GetSetting("K", ""), std::string(2048, 'w'));
  EXPECT_EQ(FirstFieldOf(Bytes(), 3), "K~2");
  EXPECT_EQ(FirstFieldOf(Bytes(), 4), "");
  EXPECT_EQ(FirstFieldOf(Bytes(), 5), "");
}

TEST_F(Values, OfMoreThanNineChunksAreReadInTheOrderOfTheirNumbers) {
  std::string value;
  for (char c = 'a'; c < 'm'; ++c) value += std::string(1024, c);
  store.SaveSetting("K", value);
  EXPECT_EQ(FirstFieldOf(Bytes(), 13), "K~12");
  EXPECT_EQ(store.GetSetting("K", ""), value);
}

TEST_F(Values, AreJoinedFromChunksThatLieAnywhere) {
  WriteBytes(EmptyRecordBytes() + RecordBytes("K~3", "three") + RecordBytes("K~2", "two") +
             RecordBytes("L", "other") + RecordBytes("K", "one"));
  EXPECT_EQ(store.GetSetting("K", ""), "onetwothree");
}

TEST_F(Values, OfManyKeysAreThoseThatEachKeyHas) {
  WriteBytes(EmptyRecordBytes() + RecordBytes("K~3", "three") + RecordBytes("K~2", "two") +
             RecordBytes("a key", "first") + RecordBytes("L", "") + RecordBytes("K", "one") +
             RecordBytes("A KEY", "second") + RecordBytes("K~02", "no chunk") +
             RecordBytes("K~2~3", "no chunk") + RecordBytes("Ke", "longer") +
             RecordBytes(std::string("M\0~2", 4), "no key") + RecordBytes("N~2", "no beginning"));
  const std::vector<std::string> keys{"K",     "A Key", "missing", "l", "k",
                                      "a key", "Ke",    "M",       "N", "Ω"};
  std::vector<std::string> each;
  for (const std::string& key : keys) each.push_back(store.GetSetting(key, "default"));
  EXPECT_EQ(store.GetSettings(keys, "default"), each);
  EXPECT_THAT(each, ::testing::ElementsAre("onetwothree", "first", "default", "", "onetwothree",
                                           "first", "longer", "default", "default", "default"));
}

TEST_F(Values, OfManyKeysAreRefusedWithABadOneAmongThem) {
  EXPECT_THROW(store.GetSettings({"K", "K~2"}, ""), RuntimeError);
  EXPECT_THAT(store.GetSettings({}, ""), ::testing::IsEmpty());
}

TEST_F(Values, OfManyKeysAreTheDefaultWithoutAFile) {
  store.SetRegistryDataFile("");
  EXPECT_THAT(store.GetSettings({"K", "L"}, "-"), ::testing::ElementsAre("-", "-"));
}

TEST_F(Values, EndAtTheFirstMissingChunk) {
  WriteBytes(EmptyRecordBytes() + RecordBytes("K", "one") + RecordBytes("K~3", "three"));
  EXPECT_EQ(store.GetSetting("K", ""), "one");
}

TEST_F(Values, TakeTheFirstOfSeveralEqualChunks) {
  WriteBytes(EmptyRecordBytes() + RecordBytes("K", "one") + RecordBytes("K~2", "first") +
             RecordBytes("K~2", "second"));
  EXPECT_EQ(store.GetSetting("K", ""), "onefirst");
}

TEST_F(Values, SavingStopsBlankingAtTheFirstMissingChunk) {
  WriteBytes(EmptyRecordBytes() + RecordBytes("K", "one") + RecordBytes("K~2", "two") +
             RecordBytes("K~4", "four"));
  store.SaveSetting("K", "x");
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("K", "x") + EmptyRecordBytes() +
                         RecordBytes("K~4", "four"));
}

// Continuations are found in any letter case and blanked in their own only.
TEST_F(Values, SavingUnderAnotherLetterCaseLeavesTheContinuationsOfTheFormerOne) {
  store.SaveSetting("KEY", std::string(2500, 'v'));
  store.SaveSetting("key", "x");
  const std::string bytes = Bytes();
  EXPECT_EQ(FirstFieldOf(bytes, 2), "key");
  EXPECT_EQ(FirstFieldOf(bytes, 3), "KEY~2");
  EXPECT_EQ(FirstFieldOf(bytes, 4), "KEY~3");
  EXPECT_EQ(store.GetSetting("key", ""), "x" + std::string(2500 - 1024, 'v'));
}

}  // namespace
}  // namespace tarvo::test
