#include <gtest/gtest.h>
#include <locale.h>
#include <wctype.h>

#include <memory>
#include <string>

#include "base/text.h"

namespace tarvo {
namespace {

// The system's own case tables, which were made from Unicode's.
class SystemTables {
 public:
  char32_t Lower(char32_t c) const { return ::towlower_l(c, locale_.get()); }
  char32_t Upper(char32_t c) const { return ::towupper_l(c, locale_.get()); }

 private:
  struct Free {
    void operator()(locale_t locale) const { ::freelocale(locale); }
  };
  std::unique_ptr<std::remove_pointer_t<locale_t>, Free> locale_{
      ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)};
};

bool IsBetween(char32_t c, char32_t first, char32_t last) { return c >= first && c <= last; }

bool IsOfAPromisedScript(char32_t c) {
  const bool latin = c < 0x180 || IsBetween(c, 0x1E00, 0x1E95) || IsBetween(c, 0x1EA0, 0x1EFF);
  const bool greek = IsBetween(c, 0x386, 0x3CE);
  const bool cyrillic = IsBetween(c, 0x400, 0x481);
  const bool armenian = IsBetween(c, 0x531, 0x586);
  return latin || greek || cyrillic || armenian;
}

// Letters whose other case is ASCII, is used by another pair, or is written with two letters.
bool StandsAlone(char32_t c) {
  return c == 0xB5 || c == 0x130 || c == 0x131 || c == 0x17F || c == 0x1E9E;
}

TEST(LetterCase, FollowsTheSystemsTablesWhereverItMapsALetter) {
  const SystemTables tables;
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    const char32_t lower = LowerCase(c);
    const char32_t upper = UpperCase(c);
    ASSERT_TRUE(lower == c || lower == tables.Lower(c)) << std::hex << std::uint32_t(c);
    ASSERT_TRUE(upper == c || upper == tables.Upper(c)) << std::hex << std::uint32_t(c);
  }
}

TEST(LetterCase, MapsEveryLetterOfThePromisedScripts) {
  const SystemTables tables;
  for (char32_t c = 0; c < 0x2000; ++c) {
    if (!IsOfAPromisedScript(c) || StandsAlone(c)) continue;
    EXPECT_EQ(LowerCase(c), tables.Lower(c)) << std::hex << std::uint32_t(c);
    EXPECT_EQ(UpperCase(c), tables.Upper(c)) << std::hex << std::uint32_t(c);
  }
}

TEST(LetterCase, OfTextsMapsEachLetterAndKeepsTheRest) {
  EXPECT_EQ(LowerCase("ÉCOLE Ÿ 12"), "école ÿ 12");
  EXPECT_EQ(UpperCase("école ÿ 12"), "ÉCOLE Ÿ 12");
  EXPECT_EQ(LowerCase("ΈΛΕΓΧΟΣ"), "έλεγχοσ");
  EXPECT_EQ(UpperCase("έλεγχος"), "ΈΛΕΓΧΟΣ");
  EXPECT_EQ(LowerCase("ЁЛКА"), "ёлка");
  EXPECT_EQ(UpperCase("ёлка"), "ЁЛКА");
}

TEST(LetterCase, LeavesLettersWithoutAPartnerAlone) {
  EXPECT_EQ(UpperCase("straße"), "STRAßE");
  EXPECT_EQ(LowerCase("İ"), "İ");
  EXPECT_EQ(UpperCase("÷"), "÷");
  EXPECT_EQ(LowerCase("×"), "×");
  EXPECT_EQ(UpperCase("µ"), "µ");
  EXPECT_EQ(LowerCase("ς"), "ς");
}

TEST(LetterCase, KeepsBadBytes) {
  EXPECT_EQ(LowerCase("A\xC9Z\xFF"), "a\xC9z\xFF");
  EXPECT_EQ(UpperCase("a\xE9z\xFF"), "A\xE9Z\xFF");
}

TEST(EqualIgnoringCase, ComparesLettersOfAllAlphabets) {
  EXPECT_TRUE(EqualIgnoringCase("Download.EXE", "download.exe"));
  EXPECT_TRUE(EqualIgnoringCase("MÈTRE", "mètre"));
  EXPECT_TRUE(EqualIgnoringCase("Ÿ", "ÿ"));
  EXPECT_TRUE(EqualIgnoringCase("", ""));
  EXPECT_FALSE(EqualIgnoringCase("metre", "mètre"));
  EXPECT_FALSE(EqualIgnoringCase("straße", "strasse"));
  EXPECT_FALSE(EqualIgnoringCase("a", "ab"));
  EXPECT_FALSE(EqualIgnoringCase("\xE9", "é"));
}

TEST(CompareIgnoringCase, OrdersByTheCodePointsOfTheLowerCase) {
  EXPECT_EQ(CompareIgnoringCase("Meter", "mETER"), 0);
  EXPECT_LT(CompareIgnoringCase("alpha", "BETA"), 0);
  EXPECT_GT(CompareIgnoringCase("BETA", "alpha"), 0);
  EXPECT_LT(CompareIgnoringCase("(", "a"), 0);
  EXPECT_LT(CompareIgnoringCase("z", "é"), 0);
  EXPECT_LT(CompareIgnoringCase("_", "A"), 0) << "the underscore stands between the two cases";
  EXPECT_LT(CompareIgnoringCase("\uFFFD", "\U00010000"), 0);
}

TEST(CompareIgnoringCase, PutsTheBeginningOfATextBeforeIt) {
  EXPECT_LT(CompareIgnoringCase("", "a"), 0);
  EXPECT_LT(CompareIgnoringCase("Meter", "meter 2"), 0);
  EXPECT_GT(CompareIgnoringCase("meter 2", "Meter"), 0);
}

TEST(CompareIgnoringCase, PutsBadBytesBehindAllCharacters) {
  EXPECT_LT(CompareIgnoringCase("\U0010FFFF", "\x80"), 0);
  EXPECT_LT(CompareIgnoringCase("\x80", "\xFF"), 0);
}

}  // namespace
}  // namespace tarvo
