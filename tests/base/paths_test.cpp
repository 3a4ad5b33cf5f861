#include "base/paths.h"

#include <gtest/gtest.h>

#include <string>

namespace tarvo {
namespace {

TEST(MatchesPattern, TakesStarDotStarForEveryName) {
  EXPECT_TRUE(MatchesPattern("driver.inf", "*.*"));
  EXPECT_TRUE(MatchesPattern("README", "*.*"));
  EXPECT_TRUE(MatchesPattern("", "*.*"));
  EXPECT_FALSE(MatchesPattern("README", "R*.*")) << "only the whole pattern is special";
  EXPECT_FALSE(MatchesPattern("README", "*.")) << "only the whole pattern is special";
}

TEST(MatchesPattern, IgnoresLetterCase) {
  EXPECT_TRUE(MatchesPattern("Data.CSV", "*.csv"));
  EXPECT_TRUE(MatchesPattern("data.csv", "*.CSV"));
  EXPECT_TRUE(MatchesPattern("MÈTRE.txt", "mè*"));
}

TEST(MatchesPattern, ComparesTheWholeName) {
  EXPECT_FALSE(MatchesPattern("data.csv.bak", "*.csv"));
  EXPECT_FALSE(MatchesPattern("data.csvx", "*.csv"));
  EXPECT_FALSE(MatchesPattern("csv", "*.csv"));
  EXPECT_TRUE(MatchesPattern(".csv", "*.csv"));
  EXPECT_TRUE(MatchesPattern("a.csv.csv", "*.csv"));
  EXPECT_TRUE(MatchesPattern("driver.inf", "Driver.inf"));
  EXPECT_FALSE(MatchesPattern("driver.in", "driver.inf"));
}

TEST(MatchesPattern, FindsAnEndingAsItFindsAnyText) {
  for (const std::string name :
       {"", "csv", ".csv", ".CSV", "data.csv", "Daten.cSv", "größe.csv", "a.csv.csv", "a.csvx",
        "a\xFF.csv", "a.c\xFFv", "a.cs\u0432", "\u212A.csv", "a.\u0421SV"}) {
    EXPECT_EQ(MatchesPattern(name, "*.csv"), MatchesPattern(name, "**.csv")) << name;
    EXPECT_EQ(MatchesPattern(name, "*k.csv"), MatchesPattern(name, "**k.csv")) << name;
  }
}

TEST(MatchesPattern, TakesAQuestionMarkForExactlyOneCharacter) {
  EXPECT_TRUE(MatchesPattern("a1b", "a?b"));
  EXPECT_TRUE(MatchesPattern("aéb", "a?b")) << "of two bytes";
  EXPECT_TRUE(MatchesPattern("a€b", "a?b")) << "of three bytes";
  EXPECT_TRUE(MatchesPattern("a\U0001F600b", "a?b")) << "of four bytes";
  EXPECT_TRUE(
      MatchesPattern("a\xFF"
                     "b",
                     "a?b"))
      << "a bad byte";
  EXPECT_FALSE(MatchesPattern("ab", "a?b"));
  EXPECT_FALSE(MatchesPattern("a12b", "a?b"));
  EXPECT_FALSE(MatchesPattern("ab", "ab?"));
  EXPECT_FALSE(MatchesPattern("é", "??"));
}

TEST(MatchesPattern, TakesAStarForAnyCharacters) {
  EXPECT_TRUE(MatchesPattern("", "*"));
  EXPECT_TRUE(MatchesPattern("abc", "*"));
  EXPECT_TRUE(MatchesPattern("abc", "**c"));
  EXPECT_TRUE(MatchesPattern("abc", "abc***"));
  EXPECT_TRUE(MatchesPattern("Meter_2.1.drv", "Meter_*.drv"));
  EXPECT_FALSE(MatchesPattern("abc", "*d*"));
  EXPECT_FALSE(MatchesPattern("abc", ""));
  EXPECT_TRUE(MatchesPattern("", ""));
  EXPECT_FALSE(MatchesPattern("", "?"));
}

TEST(MatchesPattern, TriesLaterPlacesForAStar) {
  EXPECT_TRUE(MatchesPattern("aXbXc", "*Xc"));
  EXPECT_TRUE(MatchesPattern("ababac", "*abac"));
  EXPECT_TRUE(MatchesPattern("x-1-2-end", "x*-?-end"));
  EXPECT_FALSE(MatchesPattern("ababab", "*abac"));
  EXPECT_TRUE(MatchesPattern("é€é€!", "*é€!"));
}

TEST(MatchesPattern, TakesOtherSignsLiterally) {
  EXPECT_TRUE(MatchesPattern("a[1]+(2).txt", "a[1]+(2).txt"));
  EXPECT_FALSE(MatchesPattern("a1", "a[1]"));
  EXPECT_FALSE(MatchesPattern("aXb", "a.b"));
}

TEST(MatchesPattern, JudgesAPatternOfManyStarsWithoutTryingAllCombinations) {
  const std::string name(250, 'a');
  std::string pattern;
  for (int i = 0; i < 40; ++i) pattern += "a*";
  EXPECT_FALSE(MatchesPattern(name, pattern + "b"));
  EXPECT_TRUE(MatchesPattern(name + "b", pattern + "b"));
}

}  // namespace
}  // namespace tarvo
