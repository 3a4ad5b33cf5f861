#include "store_fixture.h"

namespace tarvo::test {
namespace {

using Strings = std::vector<std::string>;
using Deleting = StoreTest;
using Enumerating = StoreTest;

TEST_F(Deleting, OverwritesTheRecordWithNulsAndKeepsTheFilesLength) {
  store.SaveSetting("A", "1");
  store.SaveSetting("B", "2");
  store.DeleteKey("A");
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + EmptyRecordBytes() + RecordBytes("B", "2"));
  EXPECT_EQ(store.GetSetting("A", "default"), "default");
}

TEST_F(Deleting, TakesAllContinuationsAndDuplicatesWithIt) {
  WriteBytes(EmptyRecordBytes() + RecordBytes("K~2", "b") + RecordBytes("K", "a") +
             RecordBytes("L", "keep") + RecordBytes("K~17", "c") + RecordBytes("K", "again"));
  store.DeleteKey("K");
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + EmptyRecordBytes() + EmptyRecordBytes() +
                         RecordBytes("L", "keep") + EmptyRecordBytes() + EmptyRecordBytes());
}

TEST_F(Deleting, IsExactInLetterCase) {
  store.SaveSetting("Foo", "1");
  store.SaveSetting("É", "2");
  const std::string before = Bytes();
  store.DeleteKey("foo");
  store.DeleteKey("FOO");
  store.DeleteKey("é");
  EXPECT_EQ(Bytes(), before);
  store.DeleteKey("É");
  EXPECT_EQ(store.GetSetting("É", "none"), "none");
}

TEST_F(Deleting, TakesNoKeyThatOnlyBeginsOrEndsAlike) {
  store.SaveSetting("Foobar", "1");
  const std::string before = Bytes();
  store.DeleteKey("Foo");
  store.DeleteKey("bar");
  EXPECT_EQ(Bytes(), before);
}

TEST_F(Deleting, NamesNoContinuationByItself) {
  store.SaveSetting("K", std::string(1025, 'v'));
  const std::string before = Bytes();
  store.DeleteKey("K~2");
  EXPECT_EQ(Bytes(), before);
}

TEST_F(Deleting, LooksAtTheKeyFieldUpToItsNulOnly) {
  WriteBytes(EmptyRecordBytes() + RecordBytes(std::string("K\0x", 3), "v"));
  store.DeleteKey("K");
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + EmptyRecordBytes());
}

TEST_F(Deleting, RaisesNoErrorForAnyKey) {
  EXPECT_EQ(ErrorOf([&] { store.DeleteKey("a~b"); }), 0);
  EXPECT_EQ(ErrorOf([&] { store.DeleteKey(std::string(5000, 'k')); }), 0);
  EXPECT_EQ(ErrorOf([&] { store.DeleteKey(""); }), 0);
}

TEST_F(Deleting, NeitherTakesNorHeedsTheLock) {
  const std::string lock = RecordBytes("foreign", "45000.5");
  WriteBytes(lock + RecordBytes("K", "v"));
  bool lockWritten = false;
  platform.beforeWriting = [&](std::uint64_t offset, auto) { lockWritten |= offset < kRecord; };
  store.DeleteKey("K");
  EXPECT_FALSE(lockWritten);
  EXPECT_EQ(Bytes(), lock + EmptyRecordBytes());
}

TEST_F(Enumerating, GivesEachKeyOnceInTheOrderOfTheFile) {
  for (const char* key : {"Zebra", "apple", "Mango"}) store.SaveSetting(key, "v");
  store.SaveSetting("apple", std::string(3000, 'v'));
  EXPECT_EQ(store.EnumEntries(), (Strings{"Zebra", "apple", "Mango"}));
}

TEST_F(Enumerating, GivesTheFirstSpellingOfKeysThatDifferInLetterCase) {
  WriteBytes(EmptyRecordBytes() + RecordBytes("foo~2", "v") + RecordBytes("FOO", "v") +
             RecordBytes("\xC9t\xE9", "v") + RecordBytes("\xE9T\xC9", "v"));
  EXPECT_EQ(store.EnumEntries(), (Strings{"foo", "Été"}));
}

TEST_F(Enumerating, SkipsEmptyRecordsAndCutsAtTheNul) {
  WriteBytes(EmptyRecordBytes() + EmptyRecordBytes() + RecordBytes(std::string("K\0x", 3), "v") +
             EmptyRecordBytes() + RecordBytes("L", "v"));
  EXPECT_EQ(store.EnumEntries(), (Strings{"K", "L"}));
}

TEST_F(Enumerating, GivesTheEmptyKeyForAContinuationOfNothing) {
  WriteBytes(EmptyRecordBytes() + RecordBytes("~2", "v"));
  EXPECT_EQ(store.EnumEntries(), Strings{""});
}

TEST_F(Enumerating, OfAFileWithoutEntriesGivesNone) { EXPECT_EQ(store.EnumEntries(), Strings{}); }

TEST_F(Enumerating, OfNoFileGivesNone) {
  store.SaveSetting("K", "v");
  store.SetRegistryDataFile("");
  EXPECT_EQ(store.EnumEntries(), Strings{});
}

}  // namespace
}  // namespace tarvo::test
