#include "store_fixture.h"

namespace tarvo::test {
namespace {

using Keys = StoreTest;

TEST_F(Keys, ATildeRaisesError5AndWritesNothing) {
  EXPECT_EQ(ErrorOf([&] { store.GetSetting("a~b", ""); }), 5);
  EXPECT_EQ(ErrorOf([&] { store.SaveSetting("K~2", "v"); }), 5);
  EXPECT_EQ(Bytes(), EmptyRecordBytes());
}

TEST_F(Keys, OneOf1000CharactersWorksAlsoWithALongValue) {
  const std::string key(1000, 'k');
  store.SaveSetting(key, std::string(3000, 'v'));
  EXPECT_EQ(store.GetSetting(key, ""), std::string(3000, 'v'));
  EXPECT_EQ(FirstFieldOf(Bytes(), 4), key + "~3");
}

TEST_F(Keys, OneOf1001CharactersRaisesError5) {
  const std::string key(1001, 'k');
  EXPECT_EQ(ErrorOf([&] { store.GetSetting(key, ""); }), 5);
  EXPECT_EQ(ErrorOf([&] { store.SaveSetting(key, "v"); }), 5);
  EXPECT_EQ(Bytes(), EmptyRecordBytes());
}

TEST_F(Keys, BadOnesRaiseError5AlsoWithoutAFile) {
  store.SetRegistryDataFile("");
  EXPECT_EQ(ErrorOf([&] { store.GetSetting("~", ""); }), 5);
  EXPECT_EQ(ErrorOf([&] { store.SaveSetting("~", ""); }), 5);
}

TEST_F(Keys, DifferingInLetterCaseOnlyNameOneEntry) {
  store.SaveSetting("Foo", "1");
  EXPECT_EQ(store.GetSetting("fOO", ""), "1");
  store.SaveSetting("FOO", "2");
  EXPECT_EQ(store.GetSetting("foo", ""), "2");
  EXPECT_EQ(Records(), 2u);
}

TEST_F(Keys, OneThatBeginsLikeAnotherIsAnEntryOfItsOwn) {
  store.SaveSetting("Foobar", "1");
  EXPECT_EQ(store.GetSetting("Foo", "none"), "none");
  EXPECT_EQ(store.GetSetting("Foobarb", "none"), "none");
  store.SaveSetting("Foo", "2");
  EXPECT_EQ(store.GetSetting("Foobar", ""), "1");
  EXPECT_EQ(store.GetSetting("Foo", ""), "2");
}

TEST_F(Keys, OneWithRubbishBehindItsNulIsNotFound) {
  WriteBytes(EmptyRecordBytes() + RecordBytes(std::string("K\0x", 3), "v"));
  EXPECT_EQ(store.GetSetting("K", "default"), "default");
  store.SaveSetting("K", "new");
  EXPECT_EQ(Records(), 3u);
}

TEST_F(Keys, TheFirstOfSeveralEqualOnesCounts) {
  WriteBytes(EmptyRecordBytes() + RecordBytes("k", "first") + RecordBytes("K", "second"));
  EXPECT_EQ(store.GetSetting("K", ""), "first");
  store.SaveSetting("K", "new");
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("K", "new") + RecordBytes("K", "second"));
}

TEST_F(Keys, TheEmptyOneIsThatOfTheFirstEmptyRecord) {
  EXPECT_EQ(store.GetSetting("", "default"), "default");
  WriteBytes(EmptyRecordBytes() + RecordBytes("A", "1") + EmptyRecordBytes());
  EXPECT_EQ(store.GetSetting("", "default"), "");
  store.SaveSetting("", "v");
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("A", "1") + RecordBytes("", "v"));
  EXPECT_EQ(store.GetSetting("", "default"), "v");
}

TEST_F(Keys, WithContinuationsButNoFirstRecordGiveTheDefault) {
  WriteBytes(EmptyRecordBytes() + RecordBytes("K~1", "one") + RecordBytes("K~2", "two"));
  EXPECT_EQ(store.GetSetting("K", "default"), "default");
}

TEST_F(Keys, ContinuationsAreNumberedFrom2WithoutLeadingZeros) {
  WriteBytes(EmptyRecordBytes() + RecordBytes("K~1", "no") + RecordBytes("K", "a") +
             RecordBytes("K~02", "no") + RecordBytes("K~+2", "no") + RecordBytes("K~", "no") +
             RecordBytes("K~2x", "no") + RecordBytes("K~18446744073709551618", "no") +
             RecordBytes("k~2", "b"));
  EXPECT_EQ(store.GetSetting("K", ""), "ab");
}

}  // namespace
}  // namespace tarvo::test
