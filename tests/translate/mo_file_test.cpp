#include "translate/mo_file.h"

#include <gmock/gmock.h>

#include <string>

#include "base/runtime_error.h"
#include "support/made_dictionary.h"

namespace tarvo {
namespace {

using test::MakeDictionary;
using test::PoHeader;
using test::PoText;
using test::TemporaryFolder;

MATCHER_P2(IsEntry, original, translation, "") {
  return arg.original == original && arg.translation == translation;
}

// The error that reading the bytes gives; "" when they can be read.
std::string ErrorOf(std::string_view bytes) {
  try {
    ReadMoFile(bytes, "TARVO.DIC");
    return "";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), kInvalidFileFormat);
    return error.Description();
  }
}

std::string Compiled(std::string_view poText, const std::string& options = {}) {
  const TemporaryFolder folder;
  return MakeDictionary(folder, poText, options);
}

TEST(MoFile, GivesEveryPhraseWithItsTranslation) {
  const std::string bytes = Compiled(PoText({{"Open", "Öffnen"}, {"Close", "Schließen"}}));
  EXPECT_THAT(
      ReadMoFile(bytes, "").entries,
      testing::UnorderedElementsAre(IsEntry("Open", "Öffnen"), IsEntry("Close", "Schließen")));
}

TEST(MoFile, ReadsBothByteOrders) {
  const std::string text = PoText({{"Open", "Öffnen"}, {"Close", "Schließen"}});
  const std::string little = Compiled(text, "--endianness=little");
  const std::string big = Compiled(text, "--endianness=big");
  ASSERT_NE(little, big);
  EXPECT_EQ(ReadMoFile(little, "").entries.size(), 2U);
  EXPECT_THAT(ReadMoFile(big, "").entries, testing::Contains(IsEntry("Close", "Schließen")));
}

TEST(MoFile, ReadsAFileWithoutAHashTable) {
  EXPECT_EQ(ReadMoFile(Compiled(PoText({{"a", "b"}}), "--no-hash"), "").entries.size(), 1U);
}

TEST(MoFile, LeavesOutContextsAndPlurals) {
  const std::string bytes = Compiled(PoHeader() +
                                     "msgctxt \"menu\"\nmsgid \"Open\"\nmsgstr \"Öffnen\"\n\n"
                                     "msgid \"%1 file\"\nmsgid_plural \"%1 files\"\n"
                                     "msgstr[0] \"%1 Datei\"\nmsgstr[1] \"%1 Dateien\"\n\n"
                                     "msgid \"Close\"\nmsgstr \"Schließen\"\n");
  EXPECT_THAT(ReadMoFile(bytes, "").entries, testing::ElementsAre(IsEntry("Close", "Schließen")));
}

// The language that a catalogue with these lines in its description is in.
std::string LanguageOf(const std::string& lines) {
  const std::string bytes = Compiled("msgid \"\"\nmsgstr \"" + lines + "\"\n");
  return std::string(ReadMoFile(bytes, "").language);
}

TEST(MoFile, TellsTheLanguageThatItsDescriptionNames) {
  const std::string charset = "Content-Type: text/plain; charset=UTF-8\\n";
  EXPECT_EQ(LanguageOf("Language: de\\n" + charset), "de");
  EXPECT_EQ(LanguageOf(charset + "Language: de_AT\\n"), "de_AT");
  EXPECT_EQ(LanguageOf("Language-Team: German\\nLanguage:fr \\t\\r\\n" + charset), "fr");
  EXPECT_EQ(LanguageOf(charset + "language: es"), "es");
}

TEST(MoFile, NamesNoLanguageWhenItsDescriptionDoesNot) {
  const std::string charset = "Content-Type: text/plain; charset=UTF-8\\n";
  EXPECT_EQ(LanguageOf(charset), "");
  EXPECT_EQ(LanguageOf(charset + "Language: \\n"), "");
  EXPECT_EQ(LanguageOf(charset + "X-Language: de\\nLanguage-Team: German\\n"), "");
  EXPECT_EQ(ReadMoFile(Compiled("msgid \"a\"\nmsgstr \"Language: de\"\n"), "").language, "");
}

TEST(MoFile, AFileWithoutAnyRecordIsEmpty) {
  EXPECT_TRUE(ReadMoFile(Compiled(PoHeader()), "").entries.empty());
  const std::string nothing(
      "\xDE\x12\x04\x95\0\0\0\0\0\0\0\0\x1C\0\0\0\x1C\0\0\0\0\0\0\0\x1C\0\0\0", 28);
  EXPECT_TRUE(ReadMoFile(nothing, "").entries.empty());
}

TEST(MoFile, ReadsAsciiAndFilesThatNameNoCharacterSet) {
  const std::string phrase = "msgid \"a\"\nmsgstr \"b\"\n";
  EXPECT_EQ(ReadMoFile(Compiled(PoHeader("ASCII") + phrase), "").entries.size(), 1U);
  EXPECT_EQ(ReadMoFile(Compiled(PoHeader("US-ASCII") + phrase), "").entries.size(), 1U);
  EXPECT_EQ(ReadMoFile(Compiled(PoHeader("utf-8") + phrase), "").entries.size(), 1U);
  EXPECT_EQ(ReadMoFile(Compiled(phrase), "").entries.size(), 1U);
}

TEST(MoFile, AnotherCharacterSetIsRefusedByName) {
  const std::string bytes = Compiled(PoHeader("ISO-8859-1") + "msgid \"a\"\nmsgstr \"\xE9\"\n");
  EXPECT_EQ(ErrorOf(bytes),
            "The dictionary \"TARVO.DIC\" cannot be used: it is in the character set ISO-8859-1; "
            "only UTF-8 can be read.");
}

TEST(MoFile, WhatIsNoCatalogueIsRefused) {
  EXPECT_EQ(ErrorOf(""),
            "The dictionary \"TARVO.DIC\" cannot be used: it is too short to be a dictionary.");
  EXPECT_EQ(ErrorOf("msgid \"Open\"\nmsgstr \"Oeffnen\"\n"),
            "The dictionary \"TARVO.DIC\" cannot be used: it is not a dictionary.");
}

TEST(MoFile, AnUnknownMajorRevisionIsRefused) {
  std::string bytes = Compiled(PoText({{"a", "b"}}), "--endianness=little");
  bytes[6] = 1;
  EXPECT_EQ(ErrorOf(bytes), "");
  bytes[6] = 2;
  EXPECT_THAT(ErrorOf(bytes), testing::HasSubstr("too new"));
}

TEST(MoFile, EveryTruncationIsReadOrRefused) {
  const std::string bytes = Compiled(PoText({{"Open", "Öffnen"}, {"Close", "Schließen"}}));
  ASSERT_EQ(ErrorOf(bytes), "");
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    // A copy of exactly this size, so that a sanitizer sees every byte read beyond it.
    const std::string cut(bytes.data(), size);
    EXPECT_NE(ErrorOf(cut), "") << size;
  }
}

TEST(MoFile, EveryDamagedByteIsReadOrRefused) {
  const std::string bytes = Compiled(PoText({{"Open", "Öffnen"}, {"Close", "Schließen"}}));
  int refused = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    for (const int value : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
      std::string damaged = bytes;
      damaged[i] = static_cast<char>(value);
      if (!ErrorOf(damaged).empty()) ++refused;
    }
  }
  EXPECT_GT(refused, 0);
}

void PutNumber(std::string& bytes, std::size_t offset, std::uint32_t value) {
  for (int i = 0; i < 4; ++i) {
    bytes[offset + static_cast<std::size_t>(i)] = static_cast<char>(value >> (8 * i));
  }
}

TEST(MoFile, CountsAndOffsetsBeyondTheFileAreRefused) {
  const std::string good = Compiled(PoText({{"Open", "Öffnen"}}), "--endianness=little");
  for (const std::size_t field : {8U, 12U, 16U, 28U, 32U}) {
    for (const std::uint32_t value : {0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU, 0xFFFFFFF8U}) {
      std::string bad = good;
      PutNumber(bad, field, value);
      EXPECT_THAT(ErrorOf(bad), testing::HasSubstr("cut short or damaged")) << field << value;
    }
  }
}

// Every record names the same text from a little further on: 16 GB in a file of 700 KB.
TEST(MoFile, TextsThatOverlapToMoreThanAnyDictionaryHasAreRefused) {
  constexpr std::uint32_t kRecords = 40000;
  constexpr std::uint32_t kText = 400000;
  std::string bytes;
  const auto put = [&](std::uint32_t number) {
    for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(number >> shift);
  };
  for (const std::uint32_t number : {0x950412DEU, 0U, kRecords, 28U, 28U, 0U, 0U}) put(number);
  for (std::uint32_t i = 0; i < kRecords; ++i) {
    put(kText - i);
    put(28 + 8 * kRecords + i);
  }
  bytes.append(kText, 'a') += '\0';
  EXPECT_THAT(ErrorOf(bytes), testing::HasSubstr("has more text than any dictionary"));
}

TEST(MoFile, ATextWithoutItsClosingNulIsRefused) {
  std::string bytes = Compiled(PoText({{"Open", "Auf"}}), "--endianness=little");
  bytes[bytes.rfind('\0')] = 'x';
  EXPECT_THAT(ErrorOf(bytes), testing::HasSubstr("damaged"));
}

}  // namespace
}  // namespace tarvo
