#include "base/code_page.h"

#include <gtest/gtest.h>
#include <iconv.h>

#include <string>

#include "base/text.h"

namespace tarvo {
namespace {

// What the system's converter makes of one byte; "" where it has no character for it.
std::string ConvertedByTheSystem(char byte) {
  const iconv_t converter = ::iconv_open("UTF-8", "WINDOWS-1252");
  char output[8];
  char* in = &byte;
  char* out = output;
  std::size_t inLeft = 1;
  std::size_t outLeft = sizeof output;
  const bool done =
      ::iconv(converter, &in, &inLeft, &out, &outLeft) != static_cast<std::size_t>(-1);
  ::iconv_close(converter);
  return done ? std::string(output, out) : std::string();
}

TEST(Windows1252, DecodesEachByteAsTheSystemDoes) {
  int undefined = 0;
  for (int byte = 0; byte < 256; ++byte) {
    const std::string expected = ConvertedByTheSystem(static_cast<char>(byte));
    const std::string decoded = DecodeWindows1252(std::string(1, static_cast<char>(byte)));
    if (expected.empty()) {
      ++undefined;
      EXPECT_EQ(CharacterAt(decoded, 0).codePoint, static_cast<char32_t>(byte));
    } else {
      EXPECT_EQ(decoded, expected) << byte;
    }
  }
  EXPECT_EQ(undefined, 5);
}

TEST(Windows1252, EncodesAndDecodesAll256BytesBackToThemselves) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
  const std::string text = DecodeWindows1252(bytes);
  EXPECT_EQ(CharacterCount(text), 256u);
  EXPECT_EQ(ValidUtf8(text), text);
  EXPECT_EQ(EncodeWindows1252(text), bytes);
}

TEST(Windows1252, HasNoOtherCharactersThanThose256) {
  int encodable = 0;
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    if (c >= 0xD800 && c <= 0xDFFF) continue;
    std::string text;
    AppendCharacter(text, c);
    const std::string bytes = EncodeWindows1252(text);
    ASSERT_EQ(bytes.size(), 1u);
    if (bytes != "?") ++encodable;
  }
  EXPECT_EQ(encodable, 255) << "all but the question mark itself";
}

TEST(Windows1252, GivesAQuestionMarkForEachCharacterThatItLacks) {
  EXPECT_EQ(EncodeWindows1252("Łódź 5 €"),
            "?\xF3"
            "d? 5 \x80");
  EXPECT_EQ(EncodeWindows1252("\U0001F600!"), "?!");
  EXPECT_EQ(EncodeWindows1252("\u0080"), "?") << "the euro sign has its place";
  EXPECT_EQ(EncodeWindows1252("a\xFF\xE2\x82z"), "a???z") << "bad bytes are no characters";
  EXPECT_EQ(EncodeWindows1252(""), "");
}

}  // namespace
}  // namespace tarvo
