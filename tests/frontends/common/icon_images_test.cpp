#include "frontends/common/icon_images.h"

#include <gmock/gmock.h>

#include <string>

namespace tarvo {
namespace {

using ::testing::ElementsAre;

struct Entry {
  int width;
  int bits;
  std::size_t size = 4;
};

// An icon file whose images are four letters each.
std::string IconFile(const std::vector<Entry>& entries) {
  std::string file{0, 0, 1, 0, static_cast<char>(entries.size()), 0};
  std::size_t offset = 6 + 16 * entries.size();
  std::string images;
  for (const Entry& entry : entries) {
    const auto byte = [](std::size_t value) { return static_cast<char>(value & 0xFF); };
    const auto width = static_cast<std::size_t>(entry.width);
    file += {byte(width),
             byte(width),
             0,
             0,
             1,
             0,
             static_cast<char>(entry.bits),
             0,
             byte(entry.size),
             0,
             0,
             0,
             byte(offset),
             byte(offset >> 8),
             0,
             0};
    images += std::string(4, static_cast<char>('a' + images.size() / 4));
    offset += 4;
  }
  return file + images;
}

std::vector<int> Numbers(const std::string& file, int side) {
  std::vector<int> numbers;
  for (const IconImage& image : ImagesBySuitability(file, side)) numbers.push_back(image.number);
  return numbers;
}

TEST(IconImagesTest, TheSmallestThatIsLargeEnoughComesFirst) {
  const std::string file = IconFile({{16, 32}, {64, 32}, {48, 32}, {32, 32}});
  EXPECT_THAT(Numbers(file, 48), ElementsAre(2, 1, 3, 0));
  EXPECT_THAT(Numbers(file, 40), ElementsAre(2, 1, 3, 0));
  EXPECT_THAT(Numbers(file, 16), ElementsAre(0, 3, 2, 1));
}

TEST(IconImagesTest, WhenNoneIsLargeEnoughTheLargestComesFirst) {
  EXPECT_THAT(Numbers(IconFile({{16, 32}, {32, 32}}), 48), ElementsAre(1, 0));
}

TEST(IconImagesTest, OfTheSameSizeTheOneWithMostColoursComesFirst) {
  EXPECT_THAT(Numbers(IconFile({{32, 4}, {32, 32}, {32, 8}}), 32), ElementsAre(1, 2, 0));
}

TEST(IconImagesTest, AWidthOfNoneMeans256) {
  const auto images = ImagesBySuitability(IconFile({{256, 32}}), 16);
  ASSERT_EQ(images.size(), 1U);
  EXPECT_EQ(images[0].width, 256);
}

TEST(IconImagesTest, AnImageIsItsPartOfTheFile) {
  const std::string file = IconFile({{16, 32}, {32, 32}});
  const auto images = ImagesBySuitability(file, 32);
  EXPECT_EQ(images[0].bytes, "bbbb");
  EXPECT_EQ(images[1].bytes, "aaaa");
}

TEST(IconImagesTest, WhatDoesNotLieInTheFileIsLeftOut) {
  EXPECT_THAT(Numbers(IconFile({{16, 32, 200}, {32, 32}}), 16), ElementsAre(1));
  EXPECT_THAT(Numbers(IconFile({{16, 32}}).substr(0, 20), 16), ElementsAre());
  EXPECT_THAT(Numbers("", 16), ElementsAre());
}

}  // namespace
}  // namespace tarvo
