#include "common/date_text.h"

#include <gtest/gtest.h>

#include <string>

namespace tarvo {
namespace {

bool IsGermanDate(std::string_view text) { return IsDateOrTime(text, "DMY", "."); }
bool IsAmericanDate(std::string_view text) { return IsDateOrTime(text, "MDY", "/"); }
bool IsSwedishDate(std::string_view text) { return IsDateOrTime(text, "YMD", "-"); }

TEST(DateText, TwoDigitsUpTo29AreThisCenturyAndFrom30TheLast) {
  EXPECT_EQ(FullYear(0), 2000);
  EXPECT_EQ(FullYear(29), 2029);
  EXPECT_EQ(FullYear(30), 1930);
  EXPECT_EQ(FullYear(99), 1999);
}

TEST(DateText, ThreeNumbersInTheLocalesOrderAreADate) {
  EXPECT_TRUE(IsGermanDate("31.12.1999"));
  EXPECT_TRUE(IsGermanDate("1.2.24"));
  EXPECT_TRUE(IsAmericanDate("12/31/1999"));
  EXPECT_TRUE(IsSwedishDate("1999-12-31"));
}

TEST(DateText, SlashMinusAndPointSeparateInEveryLocale) {
  for (const char* text : {"3/4/2024", "3-4-2024", "3.4.2024"}) {
    EXPECT_TRUE(IsGermanDate(text)) << text;
    EXPECT_TRUE(IsAmericanDate(text)) << text;
    EXPECT_TRUE(IsSwedishDate(text)) << text;
  }
}

TEST(DateText, ASeparatorOfTheLocaleMayBeAnyCharacter) {
  EXPECT_TRUE(IsDateOrTime("31\u5E7412\u5E741999", "DMY", "\u5E74"));
  EXPECT_FALSE(IsDateOrTime("31\u5E7412\u5E741999", "DMY", "."));
}

TEST(DateText, DifferentSeparatorsInOneTextMakeNoDate) {
  EXPECT_FALSE(IsGermanDate("3.4/2024"));
  EXPECT_FALSE(IsAmericanDate("3-4/2024"));
}

TEST(DateText, AnotherOrderCountsWhenTheLocalesGivesNoDayOfTheCalendar) {
  EXPECT_TRUE(IsAmericanDate("31/12/1999"));
  EXPECT_TRUE(IsGermanDate("12.31.1999"));
  EXPECT_TRUE(IsGermanDate("1999.12.31"));
  EXPECT_TRUE(IsGermanDate("99.12.31"));
}

TEST(DateText, NoOrderMakesADateOfWhatIsNotInTheCalendar) {
  EXPECT_FALSE(IsAmericanDate("13/13/2024"));
  EXPECT_FALSE(IsAmericanDate("31/4/2024"));
  EXPECT_FALSE(IsAmericanDate("0/4/2024"));
  EXPECT_TRUE(IsAmericanDate("2/29/2024"));
  EXPECT_FALSE(IsAmericanDate("2/29/2023"));
  EXPECT_FALSE(IsAmericanDate("2/29/1900"));
}

TEST(DateText, AYearHasTwoOrFourDigitsSoThatAVersionIsNoDate) {
  EXPECT_FALSE(IsGermanDate("1.2.3"));
  EXPECT_FALSE(IsAmericanDate("1/2/3"));
  EXPECT_FALSE(IsGermanDate("1.2.345"));
  EXPECT_FALSE(IsGermanDate("1.2.12345"));
  EXPECT_FALSE(IsGermanDate("1.2.0099"));
  EXPECT_TRUE(IsGermanDate("1.2.0100"));
}

TEST(DateText, TwoNumbersAreADayAndAMonthOrAMonthAndAYear) {
  EXPECT_TRUE(IsGermanDate("1.5"));
  EXPECT_TRUE(IsGermanDate("5.31"));
  EXPECT_TRUE(IsAmericanDate("29/2"));
  EXPECT_TRUE(IsAmericanDate("5/2024"));
  EXPECT_TRUE(IsAmericanDate("2024/5"));
  EXPECT_FALSE(IsAmericanDate("13/32"));
  EXPECT_FALSE(IsAmericanDate("13/2024"));
}

TEST(DateText, ATimeAloneCounts) {
  EXPECT_TRUE(IsGermanDate("0:00"));
  EXPECT_TRUE(IsGermanDate("23:59:59"));
  EXPECT_FALSE(IsGermanDate("24:00"));
  EXPECT_FALSE(IsGermanDate("12:60"));
  EXPECT_FALSE(IsGermanDate("12:00:60"));
  EXPECT_FALSE(IsGermanDate("12:00:00:00"));
  EXPECT_FALSE(IsGermanDate("012:00"));
}

TEST(DateText, ATimeMayFollowADate) {
  EXPECT_TRUE(IsGermanDate("31.12.1999 9:05"));
  EXPECT_TRUE(IsGermanDate("  31.12.1999   09:05:59 "));
  EXPECT_FALSE(IsGermanDate("31.12.1999 25:00"));
  EXPECT_FALSE(IsGermanDate("9:05 31.12.1999"));
}

TEST(DateText, AnythingElseIsNoDate) {
  for (const char* text : {"", " ", ".", "..", "1", "1.", ".1.2024", "1..2024", "1.2.2024.", "abc",
                           "1.Mai.2024", "-1.2.2024", "1.2.3.2024", "1. 2.2024"}) {
    EXPECT_FALSE(IsGermanDate(text)) << text;
  }
}

TEST(DateText, ADateValueGivesItsDay) {
  const auto date = CalendarDateOf({36525.75});
  ASSERT_TRUE(date);
  EXPECT_EQ(date->year, 1999);
  EXPECT_EQ(date->month, 12);
  EXPECT_EQ(date->day, 31);
}

TEST(DateText, BeforeDayZeroTheFractionStillCountsForward) {
  const auto date = CalendarDateOf({-1.75});
  ASSERT_TRUE(date);
  EXPECT_EQ(date->year, 1899);
  EXPECT_EQ(date->month, 12);
  EXPECT_EQ(date->day, 29);
}

TEST(DateText, ADateValueOutsideTheYears100To9999IsNoDate) {
  EXPECT_TRUE(CalendarDateOf({-657434}));
  EXPECT_FALSE(CalendarDateOf({-657435}));
  EXPECT_TRUE(CalendarDateOf({2958465.9}));
  EXPECT_FALSE(CalendarDateOf({2958466}));
  EXPECT_FALSE(CalendarDateOf({1e300}));
}

}  // namespace
}  // namespace tarvo
