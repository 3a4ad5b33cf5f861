#include "frontends/common/twips.h"

#include <gtest/gtest.h>

#include <limits>

namespace tarvo {
namespace {

constexpr PixelBounds kDesktop{0, 0, 1000, 800};
const Scale kStandard(96);

bool Overlap(const PixelBounds& a, const PixelBounds& b) {
  return a.left < b.left + b.width && b.left < a.left + a.width && a.top < b.top + b.height &&
         b.top < a.top + a.height;
}

TEST(ScaleTest, FifteenTwipsAreAPixelAtTheStandardResolution) {
  EXPECT_EQ(kStandard.ToPixels(1500.0F), 100);
  EXPECT_EQ(kStandard.ToTwips(100), 1500);
}

TEST(ScaleTest, AFinerScreenHasMorePixelsForTheSameTwips) {
  EXPECT_EQ(Scale(192).ToPixels(1500.0F), 200);
  EXPECT_EQ(Scale(192).ToTwips(200), 1500);
}

TEST(ScaleTest, ATwipsValueBecomesTheNearestPixel) {
  EXPECT_EQ(kStandard.ToPixels(1000.0F), 67);
  EXPECT_EQ(kStandard.ToPixels(-8.0F), -1);
}

TEST(ScaleTest, AMeasuredTextKeepsItsLastPixel) {
  EXPECT_EQ(kStandard.ToPixelsUp(1500.0F), 100);
  EXPECT_EQ(kStandard.ToPixelsUp(1501.0F), 101);
}

TEST(ScaleTest, AbsurdValuesAreCut) {
  EXPECT_EQ(kStandard.ToPixels(1e30F), 32767);
  EXPECT_EQ(kStandard.ToPixels(-1e30F), -32767);
  EXPECT_EQ(kStandard.ToPixels(std::numeric_limits<float>::quiet_NaN()), 0);
}

TEST(ScaleTest, ANegativeSizeIsNone) {
  EXPECT_EQ(kStandard.ToPixels(Bounds{0, 0, -150, -150}), (PixelBounds{0, 0, 0, 0}));
}

TEST(ReachableTest, AWindowIsNotLargerThanTheDesktop) {
  EXPECT_EQ(Reachable({0, 0, 32767, 32767}, kDesktop), kDesktop);
}

TEST(ReachableTest, AWindowWithoutSizeIsTheSmallestOne) {
  EXPECT_EQ(Reachable({5, 6, 0, 0}, kDesktop), (PixelBounds{5, 6, 1, 1}));
}

TEST(ReachableTest, AWindowFarOutsideCanStillBeReached) {
  EXPECT_TRUE(Overlap(kDesktop, Reachable({32767, 32767, 100, 100}, kDesktop)));
  const PixelBounds left = Reachable({-32767, -32767, 100, 100}, kDesktop);
  EXPECT_TRUE(Overlap(kDesktop, left));
  EXPECT_EQ(left.top, 0) << "the title bar must be on the desktop";
}

TEST(ReachableTest, AWindowPartlyOutsideStaysWhereItIs) {
  EXPECT_EQ(Reachable({-20, 20, 100, 100}, kDesktop), (PixelBounds{-20, 20, 100, 100}));
}

}  // namespace
}  // namespace tarvo
