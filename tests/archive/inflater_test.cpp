#include "archive/inflater.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "archive_maker.h"

namespace tarvo::test {
namespace {

// What came of inflating bytes in pieces.
struct Inflated {
  std::string content;
  std::uint64_t taken = 0;
  bool hasEnded = false;
  bool isDamaged = false;
};

// Hands the bytes over in pieces of `inputs` bytes, with room for `outputs` bytes at a time.
Inflated InflateInPieces(Inflater& inflater, std::string_view bytes, std::size_t inputs,
                         std::size_t outputs) {
  Inflated result;
  std::string room(outputs, '\0');
  inflater.Restart();
  while (!result.hasEnded && !result.isDamaged) {
    const std::string_view input = bytes.substr(result.taken, inputs);
    const Inflater::Step step = inflater.Run(input, room);
    const bool isStuck = step.made == 0 && step.taken == result.taken;
    if (isStuck && !step.hasEnded && !step.isDamaged) break;
    result.content.append(room, 0, step.made);
    result.taken = step.taken;
    result.hasEnded = step.hasEnded;
    result.isDamaged = step.isDamaged;
  }
  return result;
}

// Some of it compresses well, some not at all.
std::string MixedContent(std::size_t size) {
  std::mt19937 random(1);
  std::string content;
  while (content.size() < size) {
    content += "2026-01-17,12:00,5.25,OK\r\n";
    if (random() % 4 == 0) {
      for (int i = 0; i < 100; ++i) content += static_cast<char>(random());
    }
  }
  return content.substr(0, size);
}

TEST(AnInflater, TakesJustTheBytesThatBelongToIt) {
  Inflater inflater;
  for (const std::size_t size : {0, 1, 100, 5000, 100'000}) {
    const std::string content = MixedContent(size);
    const std::string deflated = Deflated(content);
    // More bytes follow, as in an archive.
    for (const std::size_t inputs : {1, 3, 7, 8, 9, 1000, 1'000'000}) {
      for (const std::size_t outputs : {1, 500, 200'000}) {
        const Inflated result =
            InflateInPieces(inflater, deflated + "more than eight bytes", inputs, outputs);
        EXPECT_TRUE(result.hasEnded) << size << ' ' << inputs << ' ' << outputs;
        EXPECT_EQ(result.taken, deflated.size()) << size << ' ' << inputs << ' ' << outputs;
        EXPECT_TRUE(result.content == content) << size << ' ' << inputs << ' ' << outputs;
      }
    }
  }
}

TEST(AnInflater, DoesNotEndWhereBytesAreMissing) {
  Inflater inflater;
  const std::string content = MixedContent(5000);
  const std::string deflated = Deflated(content);
  for (std::size_t size = 0; size < deflated.size(); ++size) {
    const Inflated result = InflateInPieces(inflater, deflated.substr(0, size), 100, 500);
    EXPECT_FALSE(result.hasEnded || result.isDamaged) << size;
    EXPECT_TRUE(content.starts_with(result.content)) << size;
  }
}

TEST(AnInflater, KnowsBytesThatCannotBeDeflated) {
  Inflater inflater;
  // The fourth kind of block does not exist.
  EXPECT_TRUE(InflateInPieces(inflater, "\xFF\xFF\xFF\xFF", 4, 100).isDamaged);
  // A distance that reaches back to before the beginning: a fixed block whose first symbol is a
  // length.
  EXPECT_TRUE(InflateInPieces(inflater, std::string("\x03\x02\x00\x00\x00\x00\x00\x00", 8), 8, 100)
                  .isDamaged);
  // What came before is forgotten.
  const std::string deflated = Deflated("content");
  EXPECT_EQ(InflateInPieces(inflater, deflated, 4, 100).content, "content");
}

TEST(Crc32, IsThatOfTheStandardAndGoesOnFromPieceToPiece) {
  // The check value of CRC-32/ISO-HDLC.
  EXPECT_EQ(Crc32(0, "123456789"), 0xCBF43926U);
  EXPECT_EQ(Crc32(Crc32(0, "1234"), "56789"), 0xCBF43926U);
  EXPECT_EQ(Crc32(0, ""), 0U);
}

}  // namespace
}  // namespace tarvo::test
