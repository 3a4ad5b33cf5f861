#include <algorithm>

#include "store_fixture.h"

namespace tarvo::test {
namespace {

using FileBytes = StoreTest;

TEST_F(FileBytes, AFreshFileIsOneUnlockedLockRecord) {
  const std::string bytes = Bytes();
  ASSERT_EQ(bytes.size(), 2050u);
  EXPECT_EQ(bytes.substr(0, 2), std::string("\x00\x08", 2));
  EXPECT_EQ(bytes.substr(2), std::string(2048, '\0'));
}

TEST_F(FileBytes, AnEntryIsItsKeyAndItsValuePaddedWithNuls) {
  store.SaveSetting("Vista", "No");
  std::string expected(4100, '\0');
  expected[1] = 8;
  expected[2051] = 8;
  expected.replace(2052, 5, "Vista");
  expected.replace(3076, 2, "No");
  EXPECT_EQ(Bytes(), expected);
}

TEST_F(FileBytes, ANewEntryIsAppendedBehindFullOnes) {
  store.SaveSetting("A", "1");
  store.SaveSetting("B", "2");
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("A", "1") + RecordBytes("B", "2"));
}

TEST_F(FileBytes, AnExistingEntryIsOverwrittenInPlaceAndTakesTheNewSpelling) {
  store.SaveSetting("Long name", "a long value");
  store.SaveSetting("B", "2");
  store.SaveSetting("LONG NAME", "x");
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("LONG NAME", "x") + RecordBytes("B", "2"));
}

TEST_F(FileBytes, ANewEntryTakesTheFirstFreedRecord) {
  for (const char* key : {"A", "B", "C", "D"}) store.SaveSetting(key, "old");
  store.DeleteKey("C");
  store.DeleteKey("B");
  EXPECT_EQ(Records(), 5u);
  store.SaveSetting("E", "new");
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("A", "old") + RecordBytes("E", "new") +
                         EmptyRecordBytes() + RecordBytes("D", "old"));
}

TEST_F(FileBytes, ARecordIsFreeWhenItsFirstTextByteIsNulWhateverFollows) {
  WriteBytes(EmptyRecordBytes() + RecordBytes(std::string("\0rubbish", 8), "rubbish") +
             RecordBytes("B", "2"));
  store.SaveSetting("A", "1");
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("A", "1") + RecordBytes("B", "2"));
}

TEST_F(FileBytes, AValueOf1024CharactersFillsOneRecordWithoutANul) {
  store.SaveSetting("K", std::string(1024, 'v'));
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("K", std::string(1024, 'v')));
  EXPECT_EQ(store.GetSetting("K", ""), std::string(1024, 'v'));
}

TEST_F(FileBytes, AValueOf1025CharactersMakesTwoRecords) {
  store.SaveSetting("K", std::string(1024, 'v') + "w");
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("K", std::string(1024, 'v')) +
                         RecordBytes("K~2", "w"));
  EXPECT_EQ(store.GetSetting("K", ""), std::string(1024, 'v') + "w");
}

TEST_F(FileBytes, TheStoredLengthOfARecordIsNotLookedAt) {
  std::string foreign = RecordBytes("K", "v");
  foreign.replace(0, 2, "\x34\x12");
  WriteBytes(EmptyRecordBytes() + foreign);
  EXPECT_EQ(store.GetSetting("K", ""), "v");
}

// A file whose last record is cut to a part of its size.
std::string CutFile(int wholeRecords, double part) {
  std::string bytes = EmptyRecordBytes();
  for (int i = 1; i <= wholeRecords; ++i) {
    bytes += RecordBytes(std::string(1, static_cast<char>('@' + i)), "value");
  }
  bytes.resize(static_cast<std::size_t>(kRecord * (wholeRecords + part)));
  return bytes;
}

TEST_F(FileBytes, ALengthOfThreeRecordsAndAHalfHasTwoEntries) {
  WriteBytes(CutFile(3, 0.5));
  EXPECT_EQ(store.EnumEntries(), (std::vector<std::string>{"A", "B"}));
}

TEST_F(FileBytes, ALengthOfFourRecordsAndAHalfHasFourEntries) {
  WriteBytes(CutFile(4, 0.5));
  EXPECT_EQ(store.EnumEntries(), (std::vector<std::string>{"A", "B", "C", "D"}));
}

TEST_F(FileBytes, OtherLengthsRoundToTheNearestNumberOfEntries) {
  WriteBytes(CutFile(3, 0.49));
  EXPECT_EQ(store.EnumEntries(), (std::vector<std::string>{"A", "B"}));
  WriteBytes(CutFile(3, 0.51));
  EXPECT_EQ(store.EnumEntries(), (std::vector<std::string>{"A", "B", "C"}));
}

TEST_F(FileBytes, ANewEntryIsWrittenOverAPartThatRoundingHasLeftOut) {
  WriteBytes(CutFile(3, 0.5));
  store.SaveSetting("New", "n");
  EXPECT_EQ(Bytes(), CutFile(2, 1) + RecordBytes("New", "n"));
}

TEST_F(FileBytes, WhatACutRecordLacksReadsAsNuls) {
  std::string bytes = EmptyRecordBytes() + RecordBytes("K", "value");
  bytes.resize(kRecord + 1026 + 3);
  WriteBytes(bytes);
  EXPECT_EQ(store.GetSetting("K", "default"), "val");
}

TEST_F(FileBytes, TheFileIsReadInPiecesOnceForEachValue) {
  std::string bytes = EmptyRecordBytes();
  for (int i = 0; i < 1000; ++i) bytes += RecordBytes("Key " + std::to_string(i), "v");
  WriteBytes(bytes);
  std::size_t largest = 0;
  std::size_t total = 0;
  platform.beforeReading = [&](auto, std::size_t count) {
    largest = std::max(largest, count);
    total += count;
  };
  EXPECT_EQ(store.GetSetting("Key 999", ""), "v");
  EXPECT_LE(largest, 65536u);
  EXPECT_LE(total, bytes.size() + 2 * kRecord);
}

TEST_F(FileBytes, EveryEntryOfALongFileIsFound) {
  std::string bytes = EmptyRecordBytes();
  for (int i = 0; i < 100; ++i) {
    bytes += RecordBytes("Key " + std::to_string(i), std::to_string(i));
  }
  WriteBytes(bytes);
  for (int i = 0; i < 100; ++i) {
    EXPECT_EQ(store.GetSetting("Key " + std::to_string(i), "none"), std::to_string(i));
  }
  store.SaveSetting("Key 77", "new");
  EXPECT_EQ(Bytes(), bytes.replace(78 * kRecord, kRecord, RecordBytes("Key 77", "new")));
}

}  // namespace
}  // namespace tarvo::test
