#include "frontends/common/captions.h"

#include <gtest/gtest.h>

namespace tarvo {
namespace {

TEST(CaptionsTest, AccessKeysAreTakenOutOfNames) {
  EXPECT_EQ(WithoutAccessKey("Do&wnload"), "Download");
  EXPECT_EQ(WithoutAccessKey("R&&D &x&"), "R&D x");
  EXPECT_EQ(WithoutAccessKey(""), "");
}

TEST(CaptionsTest, ACarriageReturnIsALineBreak) {
  EXPECT_EQ(WithLineFeeds("a\rb\r\nc\nd"), "a\nb\nc\nd");
}

}  // namespace
}  // namespace tarvo
