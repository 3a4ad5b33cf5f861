#include "frontends/qt/twips.h"

#include <gtest/gtest.h>

namespace tarvo::qt {
namespace {

constexpr QRect kDesktop(0, 0, 1000, 800);

TEST(TwipsTest, FifteenTwipsAreAPixel) {
  EXPECT_EQ(ToPixels(1500.0F), 100);
  EXPECT_EQ(ToTwips(100), 1500);
}

TEST(TwipsTest, AWindowIsNotLargerThanTheDesktop) {
  EXPECT_EQ(OuterPixels({0, 0, 1e9F, 1e9F}, kDesktop), kDesktop);
}

TEST(TwipsTest, AWindowOfNegativeSizeIsTheSmallestOne) {
  EXPECT_EQ(OuterPixels({0, 0, -300, -300}, kDesktop).size(), QSize(1, 1));
}

TEST(TwipsTest, AWindowFarOutsideCanStillBeReached) {
  EXPECT_TRUE(kDesktop.intersects(OuterPixels({1e9F, 1e9F, 1500, 1500}, kDesktop)));
  const QRect left = OuterPixels({-1e9F, -1e9F, 1500, 1500}, kDesktop);
  EXPECT_TRUE(kDesktop.intersects(left));
  EXPECT_EQ(left.top(), 0) << "the title bar must be on the desktop";
}

TEST(TwipsTest, AWindowPartlyOutsideStaysWhereItIs) {
  EXPECT_EQ(OuterPixels({-300, 300, 1500, 1500}, kDesktop), QRect(-20, 20, 100, 100));
}

}  // namespace
}  // namespace tarvo::qt
