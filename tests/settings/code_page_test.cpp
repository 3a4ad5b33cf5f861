#include "store_fixture.h"

namespace tarvo::test {
namespace {

// The text `part`, `count` times.
std::string Times(int count, std::string_view part) {
  std::string text;
  for (int i = 0; i < count; ++i) text += part;
  return text;
}

class CodePage : public StoreTest {
 protected:
  // Saves and counts the writes of entry records meanwhile.
  int WritesOfSaving(std::string_view key, std::string_view value) {
    int writes = 0;
    platform.beforeWriting = [&](std::uint64_t offset, auto) { writes += offset >= kRecord; };
    store.SaveSetting(key, value);
    platform.beforeWriting = [](auto, auto) {};
    return writes;
  }
};

TEST_F(CodePage, TextIsStoredWithOneByteForEachCharacter) {
  store.SaveSetting("Größe", "5 € für Ÿ");
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("Gr\xF6\xDF"
                                                      "e",
                                                      "5 \x80 f\xFCr \x9F"));
  EXPECT_EQ(store.GetSetting("Größe", ""), "5 € für Ÿ");
  EXPECT_EQ(store.EnumEntries(), std::vector<std::string>{"Größe"});
}

TEST_F(CodePage, EveryByteButNulIsReadAndWrittenBack) {
  std::string all;
  for (int byte = 1; byte < 256; ++byte) all += static_cast<char>(byte);
  WriteBytes(EmptyRecordBytes() + RecordBytes("K", all));
  EXPECT_EQ(WritesOfSaving("K", store.GetSetting("K", "")), 1);
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("K", all));
}

TEST_F(CodePage, TheLimitOfAKeyCountsItsCharacters) {
  store.SaveSetting(Times(1000, "é"), "v");
  EXPECT_EQ(store.GetSetting(Times(1000, "É"), ""), "v");
  EXPECT_EQ(ErrorOf([&] { store.GetSetting(Times(1001, "é"), ""); }), 5);
  EXPECT_EQ(ErrorOf([&] { store.SaveSetting(Times(1001, "é"), ""); }), 5);
}

TEST_F(CodePage, TheLimitOfAValueCountsItsCharacters) {
  store.SaveSetting("K", Times(1024, "€"));
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("K", Times(1024, "\x80")));
  store.SaveSetting("K", Times(1025, "€"));
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("K", Times(1024, "\x80")) +
                         RecordBytes("K~2", "\x80"));
  EXPECT_EQ(store.GetSetting("K", ""), Times(1025, "€"));
}

TEST_F(CodePage, LetterCaseIsIgnoredInEveryLetter) {
  for (const auto& [upper, lower] : {std::pair{"É", "é"}, {"Ÿ", "ÿ"}, {"Š", "š"}, {"Þ", "þ"}}) {
    store.SaveSetting(upper, "upper");
    EXPECT_EQ(store.GetSetting(lower, "none"), "upper");
    store.SaveSetting(lower, "lower");
    EXPECT_EQ(store.GetSetting(upper, "none"), "lower");
  }
  EXPECT_EQ(Records(), 5u);
}

TEST_F(CodePage, SignsAt32ApartAreNotLetters) {
  store.SaveSetting("×", "times");
  EXPECT_EQ(store.GetSetting("÷", "none"), "none");
  store.SaveSetting("[", "bracket");
  EXPECT_EQ(store.GetSetting("{", "none"), "none");
}

TEST_F(CodePage, AnExistingValueWithACharacterItLacksIsWrittenElevenTimesWithAQuestionMark) {
  store.SaveSetting("K", "old");
  EXPECT_EQ(WritesOfSaving("K", "5 Ω"), 11);
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("K", "5 ?"));
}

TEST_F(CodePage, ANewValueWithACharacterItLacksFillsElevenRecords) {
  EXPECT_EQ(WritesOfSaving("K", "5 Ω"), 11);
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + Times(11, RecordBytes("K", "5 ?")));
  EXPECT_EQ(store.GetSetting("K", "default"), "5 ?");
  EXPECT_EQ(store.EnumEntries(), std::vector<std::string>{"K"});
}

TEST_F(CodePage, AKeyWithACharacterItLacksIsNeverFoundAgain) {
  EXPECT_EQ(WritesOfSaving("Ω", "v"), 11);
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + Times(11, RecordBytes("?", "v")));
  EXPECT_EQ(store.GetSetting("Ω", "default"), "default");
  EXPECT_EQ(store.GetSetting("?", "default"), "v");
}

TEST_F(CodePage, BytesThatAreNoTextAreWrittenAsQuestionMarks) {
  store.SaveSetting("K", "old");
  EXPECT_EQ(WritesOfSaving("K", "a\xFF"), 11);
  EXPECT_EQ(store.GetSetting("K", ""), "a?");
}

TEST_F(CodePage, AChunkThatFailsDoesNotKeepTheNextFromBeingWritten) {
  store.SaveSetting("K", std::string(2048, 'o'));
  const std::string first = std::string(1023, 'n') + "Ω";
  EXPECT_EQ(WritesOfSaving("K", first + "next"), 11 + 1);
  EXPECT_EQ(store.GetSetting("K", ""), std::string(1023, 'n') + "?next");
}

TEST_F(CodePage, AValueWithANulReadsBackCutAndIsWrittenElevenTimes) {
  store.SaveSetting("K", "old");
  EXPECT_EQ(WritesOfSaving("K", std::string("ab\0cd", 5)), 11);
  EXPECT_EQ(store.GetSetting("K", ""), "ab");
  EXPECT_EQ(Bytes(), EmptyRecordBytes() + RecordBytes("K", std::string("ab\0cd", 5)));
}

TEST_F(CodePage, ANulAtTheEndOfAValueCountsAsWell) {
  store.SaveSetting("K", "old");
  EXPECT_EQ(WritesOfSaving("K", std::string("ab\0", 3)), 11);
  EXPECT_EQ(store.GetSetting("K", ""), "ab");
}

TEST_F(CodePage, AnOrdinaryValueIsWrittenOnce) { EXPECT_EQ(WritesOfSaving("K", "v"), 1); }

}  // namespace
}  // namespace tarvo::test
