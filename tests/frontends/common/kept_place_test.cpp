#include "frontends/common/kept_place.h"

#include <gtest/gtest.h>

namespace tarvo {
namespace {

// A window that was opened at its standard place.
class KeptPlaceTest : public ::testing::Test {
 protected:
  KeptPlaceTest() { kept.Applied(kOpened); }
  void Observe(const PixelBounds& pixels) { kept.Observed(pixels, Scale(96), Scale(96)); }

  static constexpr PixelBounds kOpened{67, 67, 433, 433};
  Bounds place{1000, 1000, 6500, 6500};
  KeptPlace kept{place};
};

TEST_F(KeptPlaceTest, WhatWasAssignedStaysWhileTheScreenShowsIt) {
  Observe(kOpened);
  EXPECT_TRUE(place == (Bounds{1000, 1000, 6500, 6500}));
  EXPECT_FALSE(kept.IsAssigned());
}

TEST_F(KeptPlaceTest, AMoveChangesThePositionOnly) {
  Observe({100, 120, 433, 433});
  EXPECT_TRUE(place == (Bounds{1500, 1800, 6500, 6500}));
  EXPECT_FALSE(kept.IsAssigned());
}

TEST_F(KeptPlaceTest, ABoundThatComesBackGetsItsAssignedValueAgain) {
  Observe({0, 0, 1000, 800});
  EXPECT_EQ(place.Width, 15000);
  Observe(kOpened);
  EXPECT_TRUE(place == (Bounds{1000, 1000, 6500, 6500}));
}

TEST_F(KeptPlaceTest, SizesFollowTheScaleOfTheirScreen) {
  kept.Observed({100, 67, 500, 433}, Scale(96), Scale(192));
  EXPECT_EQ(place.Left, 1500);
  EXPECT_EQ(place.Width, 3750);
}

TEST_F(KeptPlaceTest, APlaceThatTheScreenGivesItselfChangesNothing) {
  kept.Settled({70, 90, 433, 433});
  Observe({70, 90, 433, 433});
  EXPECT_TRUE(place == (Bounds{1000, 1000, 6500, 6500}));
}

TEST_F(KeptPlaceTest, AnAssignmentIsSeenUntilItIsApplied) {
  place.Width = 3000;
  EXPECT_TRUE(kept.IsAssigned());
  kept.Applied({67, 67, 200, 433});
  EXPECT_FALSE(kept.IsAssigned());
  EXPECT_EQ(kept.Expected().width, 200);
}

TEST(NewKeptPlaceTest, NothingHasBeenAppliedYet) {
  Bounds place;
  EXPECT_TRUE(KeptPlace(place).IsAssigned());
}

}  // namespace
}  // namespace tarvo
