#include "base/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace tarvo {
namespace {

using ::testing::ElementsAre;

// One character after the other and in runs, which is to be the same.
std::vector<char32_t> CodePoints(std::string_view text) {
  std::vector<char32_t> inRuns;
  ForEachRun(
      text,
      [&](std::string_view ascii) { inRuns.insert(inRuns.end(), ascii.begin(), ascii.end()); },
      [&](char32_t c) { inRuns.push_back(c); });
  std::vector<char32_t> result;
  for (std::size_t i = 0; i < text.size();) {
    const Character c = CharacterAt(text, i);
    result.push_back(c.codePoint);
    i += c.size;
  }
  EXPECT_EQ(inRuns, result) << text;
  return result;
}

char32_t Bad(unsigned char byte) { return kBadByte + byte; }

TEST(Characters, HaveOneToFourBytes) {
  EXPECT_THAT(CodePoints("A\u00e9\u20ac\U0001F600"), ElementsAre(U'A', U'é', U'€', U'\U0001F600'));
  EXPECT_THAT(CodePoints({"\0", 1}), ElementsAre(U'\0'));
}

TEST(Characters, AtTheEdgesOfEachLengthAreRead) {
  EXPECT_THAT(CodePoints("\x7F\xC2\x80"), ElementsAre(0x7F, 0x80));
  EXPECT_THAT(CodePoints("\xDF\xBF\xE0\xA0\x80"), ElementsAre(0x7FF, 0x800));
  EXPECT_THAT(CodePoints("\xED\x9F\xBF\xEE\x80\x80"), ElementsAre(0xD7FF, 0xE000));
  EXPECT_THAT(CodePoints("\xEF\xBF\xBF\xF0\x90\x80\x80"), ElementsAre(0xFFFF, 0x10000));
  EXPECT_THAT(CodePoints("\xF4\x8F\xBF\xBF"), ElementsAre(0x10FFFF));
}

TEST(ARunOfAscii, EndsAtTheFirstOtherByteWhereverThatIs) {
  for (std::size_t size = 0; size < 20; ++size) {
    const std::string text(size, 'a');
    EXPECT_EQ(EndOfAscii(text, 0), size);
    EXPECT_EQ(EndOfAscii(text, size), size);
    for (std::size_t other = 0; other < size; ++other) {
      std::string broken = text;
      broken[other] = '\x80';
      for (std::size_t start = 0; start <= size; ++start) {
        const std::size_t end = start > other ? size : other;
        EXPECT_EQ(EndOfAscii(broken, start), end) << size << ' ' << other << ' ' << start;
      }
    }
  }
}

TEST(Characters, OfACutSequenceCountByteByByte) {
  EXPECT_THAT(CodePoints("\xC3"), ElementsAre(Bad(0xC3)));
  EXPECT_THAT(CodePoints("\xE2\x82"), ElementsAre(Bad(0xE2), Bad(0x82)));
  EXPECT_THAT(CodePoints("\xF0\x9F\x98"), ElementsAre(Bad(0xF0), Bad(0x9F), Bad(0x98)));
  EXPECT_THAT(CodePoints("\xE2\x82x"), ElementsAre(Bad(0xE2), Bad(0x82), U'x'));
  EXPECT_THAT(CodePoints("\xC3\xC3\xA9"), ElementsAre(Bad(0xC3), U'é'));
}

TEST(Characters, AreNotReadBeyondTheEndOfTheText) {
  EXPECT_THAT(CodePoints(std::string_view("\xE2\x82\xAC", 2)), ElementsAre(Bad(0xE2), Bad(0x82)));
  EXPECT_THAT(CodePoints(std::string_view("\xC3\xA9", 1)), ElementsAre(Bad(0xC3)));
}

TEST(Characters, WrittenLongerThanNeededAreBadBytes) {
  EXPECT_THAT(CodePoints("\xC0\x80"), ElementsAre(Bad(0xC0), Bad(0x80)));
  EXPECT_THAT(CodePoints("\xC1\xBF"), ElementsAre(Bad(0xC1), Bad(0xBF)));
  EXPECT_THAT(CodePoints("\xE0\x9F\xBF"), ElementsAre(Bad(0xE0), Bad(0x9F), Bad(0xBF)));
  EXPECT_THAT(CodePoints("\xF0\x8F\xBF\xBF"),
              ElementsAre(Bad(0xF0), Bad(0x8F), Bad(0xBF), Bad(0xBF)));
}

TEST(Characters, BeyondUnicodeAndSurrogatesAreBadBytes) {
  EXPECT_THAT(CodePoints("\xED\xA0\x80"), ElementsAre(Bad(0xED), Bad(0xA0), Bad(0x80)));
  EXPECT_THAT(CodePoints("\xED\xBF\xBF"), ElementsAre(Bad(0xED), Bad(0xBF), Bad(0xBF)));
  EXPECT_THAT(CodePoints("\xF4\x90\x80\x80"),
              ElementsAre(Bad(0xF4), Bad(0x90), Bad(0x80), Bad(0x80)));
  EXPECT_THAT(CodePoints("\xF5\x80"), ElementsAre(Bad(0xF5), Bad(0x80)));
}

TEST(Characters, StrayBytesStandForThemselves) {
  EXPECT_THAT(CodePoints("a\x80z\xFF"), ElementsAre(U'a', Bad(0x80), U'z', Bad(0xFF)));
}

TEST(Characters, OfAnyBytesAreWrittenBackAsTheyWere) {
  std::string everyPair;
  for (int first = 0; first < 256; ++first) {
    for (int second = 0; second < 256; ++second) {
      everyPair += static_cast<char>(first);
      everyPair += static_cast<char>(second);
    }
  }
  std::string written;
  for (const char32_t c : CodePoints(everyPair)) AppendCharacter(written, c);
  EXPECT_TRUE(written == everyPair);
}

TEST(Characters, OfAllOfUnicodeSurviveWritingAndReading) {
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    if (c >= 0xD800 && c <= 0xDFFF) continue;
    std::string text;
    AppendCharacter(text, c);
    const Character read = CharacterAt(text, 0);
    ASSERT_EQ(read.codePoint, c);
    ASSERT_EQ(read.size, text.size());
  }
}

TEST(CharacterCount, CountsCodePointsNotBytes) {
  EXPECT_EQ(CharacterCount(""), 0u);
  EXPECT_EQ(CharacterCount("Mètre"), 5u);
  EXPECT_EQ(CharacterCount("\xE2\x82"), 2u);
}

TEST(FirstCharacter, IsWholeAndMayBeABadByte) {
  EXPECT_EQ(FirstCharacter(""), "");
  EXPECT_EQ(FirstCharacter("été"), "é");
  EXPECT_EQ(FirstCharacter("\xC3(x"), "\xC3");
}

TEST(ValidUtf8, KeepsValidTextAndReplacesEachBadByte) {
  EXPECT_EQ(ValidUtf8("Größe €"), "Größe €");
  EXPECT_EQ(ValidUtf8("a\xFF\xE2\x82z"), "a\uFFFD\uFFFD\uFFFDz");
  EXPECT_EQ(ValidUtf8("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(ValidUtf8(""), "");
}

TEST(CutAtNul, GivesWhatStandsBeforeTheFirstNul) {
  EXPECT_EQ(CutAtNul({"ab\0c\0", 5}), "ab");
  EXPECT_EQ(CutAtNul({"\0a", 2}), "");
  EXPECT_EQ(CutAtNul("abc"), "abc");
  EXPECT_EQ(CutAtNul(""), "");
}

TEST(ReplaceAll, ReplacesEveryOccurrenceOnce) {
  EXPECT_EQ(ReplaceAll("a.b.c", ".", "--"), "a--b--c");
  EXPECT_EQ(ReplaceAll("aaa", "aa", "a"), "aa");
  EXPECT_EQ(ReplaceAll("xx", "x", "xx"), "xxxx");
  EXPECT_EQ(ReplaceAll("abc", "c", ""), "ab");
  EXPECT_EQ(ReplaceAll("abc", "d", "e"), "abc");
  EXPECT_EQ(ReplaceAll("", "d", "e"), "");
}

}  // namespace
}  // namespace tarvo
