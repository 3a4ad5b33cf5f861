#include "common/library.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "base/runtime_error.h"
#include "support/hand_moved_platform.h"
#include "support/temporary_folder.h"

namespace tarvo {
namespace {

using test::HandMovedPlatform;

// A platform whose short date and decimal sign are those of a country, with helpers that have read
// them.
struct Locale {
  Locale(std::string shortDate, std::string decimalSign) {
    platform.shortDatePattern = std::move(shortDate);
    platform.decimalSign = std::move(decimalSign);
    library.DetectLocale();
  }
  double ToNumber(const char* text) const { return library.ToNumber(std::string(text)); }
  bool IsDateText(const char* text) const { return library.IsDateText(std::string(text)); }

  HandMovedPlatform platform;
  Library library{platform};
};

struct German : Locale {
  German() : Locale("dd.mm.yyyy", ",") {}
};
struct French : Locale {
  French() : Locale("dd/mm/yyyy", ",") {}
};
struct American : Locale {
  American() : Locale("m/d/yyyy", ".") {}
};
struct Swedish : Locale {
  Swedish() : Locale("yyyy-mm-dd", ",") {}
};

TEST(LocaleDetection, ReadsOrderSeparatorAndDecimalSign) {
  const German german;
  EXPECT_EQ(german.library.DatePattern(), "D.M.Y");
  EXPECT_EQ(german.library.DateSeparator(), ".");
  EXPECT_EQ(german.library.DecimalSeparator(), ",");
  EXPECT_EQ(French().library.DatePattern(), "D/M/Y");
  EXPECT_EQ(American().library.DatePattern(), "M/D/Y");
  EXPECT_EQ(American().library.DecimalSeparator(), ".");
  EXPECT_EQ(Swedish().library.DatePattern(), "Y-M-D");
}

TEST(LocaleDetection, TakesAYearOfTwoDigits) {
  EXPECT_EQ(Locale("mm/dd/yy", ".").library.DatePattern(), "M/D/Y");
  EXPECT_EQ(Locale("yy-mm-dd", ".").library.DatePattern(), "Y-M-D");
}

TEST(LocaleDetection, TakesTheFirstCharacterThatIsNoDigitAsSeparator) {
  const Locale korean("yyyy. mm. dd.", ".");
  EXPECT_EQ(korean.library.DatePattern(), "Y.M.D");
  EXPECT_EQ(Locale("dd\u00B7mm\u00B7yyyy", ".").library.DateSeparator(), "\u00B7");
}

TEST(LocaleDetection, KeepsTheOrderWhenTheShortDateLacksAPart) {
  for (const char* unusable : {"", "dd.mm", "yyyymmdd", "date"}) {
    const Locale odd(unusable, ",");
    EXPECT_EQ(odd.library.DatePattern(), "M/D/Y") << unusable;
    EXPECT_EQ(odd.library.DateSeparator(), "/") << unusable;
    EXPECT_EQ(odd.library.DecimalSeparator(), ",") << unusable;
  }
}

TEST(ToNumber, ThePointIsADecimalSignInEveryLocale) {
  EXPECT_EQ(German().ToNumber("1.5"), 1.5);
  EXPECT_EQ(French().ToNumber("1.5"), 1.5);
  EXPECT_EQ(American().ToNumber("1.5"), 1.5);
  EXPECT_EQ(German().ToNumber("1.234"), 1.234);
}

TEST(ToNumber, TheLocalesOwnSignCountsToo) {
  EXPECT_EQ(German().ToNumber("1,5"), 1.5);
  EXPECT_EQ(American().ToNumber("1,5"), 1);
}

TEST(ToNumber, OnlyTheFirstPointIsReplaced) {
  // What stays behind is no number as a whole, so the leading number counts, read with "." alone.
  EXPECT_EQ(American().ToNumber("1.2.3"), 1.2);
  EXPECT_EQ(German().ToNumber("1.2.3"), 1);
}

TEST(ToNumber, TextWithoutALeadingNumberIsZero) {
  for (const char* text : {"", " ", "abc", "-", ".", "x1", "--1"}) {
    EXPECT_EQ(American().ToNumber(text), 0) << text;
    EXPECT_EQ(German().ToNumber(text), 0) << text;
  }
}

TEST(ToNumber, TakesTheLeadingNumberOfAText) {
  EXPECT_EQ(American().ToNumber("12 files"), 12);
  EXPECT_EQ(American().ToNumber(" -3.5x"), -3.5);
}

TEST(ToNumber, ReadsPlainNumbers) {
  EXPECT_EQ(German().ToNumber("0"), 0);
  EXPECT_EQ(German().ToNumber(" 102 "), 102);
  EXPECT_EQ(German().library.ToNumber(2.5), 2.5);
}

TEST(ToNumber, ADateBecomesYearMonthAndDayJoined) {
  EXPECT_EQ(German().ToNumber("03.04.2024"), 20240403);
  EXPECT_EQ(French().ToNumber("03/04/2024"), 20240403);
  EXPECT_EQ(American().ToNumber("03/04/2024"), 20240304);
  EXPECT_EQ(Swedish().ToNumber("2024-03-04"), 20240304);
  EXPECT_EQ(French().ToNumber("3/4/2024"), 202443);
}

TEST(ToNumber, AYearOfTwoDigitsGivesTheSameAsOneOfFour) {
  EXPECT_EQ(French().ToNumber("03/04/24"), French().ToNumber("03/04/2024"));
  EXPECT_EQ(French().ToNumber("03/04/30"), French().ToNumber("03/04/1930"));
  EXPECT_EQ(Swedish().ToNumber("29-03-04"), Swedish().ToNumber("2029-03-04"));
}

TEST(ToNumber, ADateValueCountsAsItsShortDate) {
  EXPECT_EQ(German().library.ToNumber(DateValue{36525.5}), 19991231);
  EXPECT_EQ(American().library.ToNumber(DateValue{36526}), 200011);
  EXPECT_EQ(Locale("mm/dd/yy", ".").library.ToNumber(DateValue{36525}), 19991231);
}

TEST(ToNumber, ADateValueOutsideTheCalendarIsItsNumber) {
  EXPECT_EQ(German().library.ToNumber(DateValue{1e300}), 1e300);
}

TEST(ToNumber, ADateWithSlashesInALocaleWithPointsEndsWithItsLeadingNumber) {
  EXPECT_TRUE(German().IsDateText("3/4/2024"));
  EXPECT_EQ(German().ToNumber("3/4/2024"), 3);
}

TEST(ToNumber, ATimeBehindADateLeavesTheDate) {
  EXPECT_EQ(Swedish().ToNumber("2024-03-04 10:30"), 20240304);
}

TEST(IsDateText, TwoSeparatorsAreNeeded) {
  EXPECT_TRUE(French().IsDateText("1/2/2024"));
  EXPECT_TRUE(French().IsDateText("01/02/24"));
  EXPECT_FALSE(French().IsDateText("1/2"));
  EXPECT_FALSE(French().IsDateText("5/2024"));
  EXPECT_FALSE(French().IsDateText("12:30:00"));
}

TEST(IsDateText, NumbersWithAPointAreNoDatesWhereThePointSeparatesDates) {
  EXPECT_FALSE(German().IsDateText("1.5"));
  EXPECT_FALSE(German().IsDateText("1.234"));
  EXPECT_FALSE(German().IsDateText("1.2.3"));
  EXPECT_TRUE(German().IsDateText("1.2.2003"));
}

TEST(IsDateText, SlashesAreLookedForWhereTheLocalesSeparatorDoesNotStandTwice) {
  EXPECT_TRUE(German().IsDateText("1/2/2024"));
  EXPECT_TRUE(Swedish().IsDateText("1/2/2024"));
  EXPECT_FALSE(American().IsDateText("1.2.2024"));
  EXPECT_FALSE(American().IsDateText("2024-02-01"));
}

TEST(IsDateText, TextThatIsNoDateNeverCounts) {
  EXPECT_FALSE(American().IsDateText("13/13/2024"));
  EXPECT_FALSE(American().IsDateText("a/b/cdef"));
  EXPECT_FALSE(American().IsDateText("//2024"));
  EXPECT_FALSE(American().IsDateText(""));
}

TEST(IsDateText, ADateValueIsADateAndANumberIsNot) {
  EXPECT_TRUE(German().library.IsDateText(DateValue{45000}));
  EXPECT_FALSE(German().library.IsDateText(DateValue{1e300}));
  EXPECT_FALSE(German().library.IsDateText(45000.0));
}

TEST(NormalizeDateText, JoinsWithoutPadding) {
  EXPECT_EQ(French().library.NormalizeDateText("3/4/2024"), "202443");
  EXPECT_EQ(French().library.NormalizeDateText("03/04/2024"), "20240403");
  EXPECT_EQ(American().library.NormalizeDateText("3/4/2024"), "202434");
}

TEST(NormalizeDateText, OnlyAYearOfExactlyTwoDigitsGetsACentury) {
  EXPECT_EQ(French().library.NormalizeDateText("1/2/29"), "202921");
  EXPECT_EQ(French().library.NormalizeDateText("1/2/30"), "193021");
  EXPECT_EQ(French().library.NormalizeDateText("1/2/3"), "321");
  EXPECT_EQ(French().library.NormalizeDateText("1/2/003"), "00321");
  EXPECT_EQ(French().library.NormalizeDateText("1/2/xy"), "xy21");
}

TEST(NormalizeDateText, KnowsOnlyTheLocalesSeparator) {
  EXPECT_EQ(German().library.NormalizeDateText("3/4/2024"), "3/4/2024");
  EXPECT_EQ(French().library.NormalizeDateText("3.4.2024"), "3.4.2024");
}

TEST(NormalizeDateText, DropsWhatStandsBehindTheLastPart) {
  EXPECT_EQ(French().library.NormalizeDateText("3/4/2024/99"), "202443");
  EXPECT_EQ(French().library.NormalizeDateText(""), "");
}

// Notes the drive letters and keeps folders real.
class DriveNotingPlatform : public HandMovedPlatform {
 public:
  void ChangeCurrentDrive(char32_t letter) override { calls.push_back({letter, ""}); }
  void ChangeCurrentFolder(std::string_view path) override {
    calls.push_back({0, std::string(path)});
  }
  struct Call {
    char32_t drive;
    std::string folder;
  };
  std::vector<Call> calls;
};

TEST(ChangeToFolder, MakesTheDriveCurrentBeforeTheFolder) {
  DriveNotingPlatform platform;
  Library(platform).ChangeToFolder("D:\\Data");
  ASSERT_EQ(platform.calls.size(), 2U);
  EXPECT_EQ(platform.calls[0].drive, U'D');
  EXPECT_EQ(platform.calls[1].folder, "D:\\Data");
}

TEST(ChangeToFolder, CountsTheSecondCharacterNotTheSecondByte) {
  DriveNotingPlatform platform;
  Library(platform).ChangeToFolder("\u00C4:x");
  ASSERT_EQ(platform.calls.size(), 2U);
  EXPECT_EQ(platform.calls[0].drive, U'\u00C4');
}

TEST(ChangeToFolder, LeavesTheDriveAloneForOtherPaths) {
  for (const char* path : {"", "x", "ab:c", "/data", "\u00C4x:"}) {
    DriveNotingPlatform platform;
    Library(platform).ChangeToFolder(path);
    ASSERT_EQ(platform.calls.size(), 1U) << path;
    EXPECT_EQ(platform.calls[0].folder, path);
  }
}

TEST(ChangeToFolder, EntersARealFolderInAnyLetterCase) {
  const test::TemporaryFolder folder;
  folder.MakeFolder("Data");
  const Library library(SystemPlatform());
  library.ChangeToFolder(folder / "data");
  EXPECT_TRUE(std::filesystem::equivalent(SystemPlatform().CurrentFolder(), folder / "Data"));
  library.ChangeToFolder("..");
  EXPECT_EQ(SystemPlatform().CurrentFolder(), folder.Path());
}

TEST(ChangeToFolder, FailsForAMissingFolderAndStays) {
  const test::TemporaryFolder folder;
  const Library library(SystemPlatform());
  library.ChangeToFolder(folder.Path());
  try {
    library.ChangeToFolder(folder / "missing");
    FAIL() << "no error";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), kPathNotFound);
  }
  EXPECT_EQ(SystemPlatform().CurrentFolder(), folder.Path());
}

// Pauses with a clock that each yield moves on by `step` seconds, and counts the yields.
int YieldsOf(HandMovedPlatform& platform, double seconds, double step) {
  int yields = 0;
  Library(platform).Pause(seconds, [&] {
    ++yields;
    platform.PassSeconds(step);
  });
  return yields;
}

TEST(Pause, YieldsUntilTheClockHasPassedTheTime) {
  HandMovedPlatform platform;
  EXPECT_EQ(YieldsOf(platform, 10, 4), 3);
  // Exactly ten seconds later is not enough.
  EXPECT_EQ(YieldsOf(platform, 10, 5), 3);
}

TEST(Pause, YieldsOnceAndUntilTheClockMovesForNoTimeAtAll) {
  HandMovedPlatform platform;
  EXPECT_EQ(YieldsOf(platform, 0, 0.25), 1);
  EXPECT_EQ(YieldsOf(platform, -5, 0.25), 1);
}

TEST(Pause, GoesOnPastMidnightUntilTheClockExceedsTheTimeAgain) {
  HandMovedPlatform platform;
  platform.secondsOfDay = 86395;
  // 86405 is never shown: the clock begins anew before it, and a day has no second above it.
  int yields = 0;
  struct Enough {};
  EXPECT_THROW(Library(platform).Pause(10,
                                       [&] {
                                         platform.PassSeconds(3600);
                                         if (++yields == 100) throw Enough();
                                       }),
               Enough);

  platform.secondsOfDay = 86380;
  // Midnight passes in the first step; only late the next evening the clock shows more than 86390.
  yields = 0;
  constexpr double kSteps[] = {30, 86380, 1};
  Library(platform).Pause(10, [&] { platform.PassSeconds(kSteps[yields++]); });
  EXPECT_EQ(yields, 3);
}

}  // namespace
}  // namespace tarvo
