#include "frontends/common/program_run.h"

#include <gtest/gtest.h>

namespace tarvo {
namespace {

TEST(ArgumentsTest, AreJoinedByOneBlank) {
  EXPECT_EQ(JoinArguments({}), "");
  EXPECT_EQ(JoinArguments({"-style", "", "a b"}), "-style  a b");
}

TEST(RunWithoutWindowsTest, LeavesArgumentsThatAskForWindowsAlone) {
  EXPECT_FALSE(RunWithoutWindows(SystemPlatform(), ""));
  EXPECT_FALSE(RunWithoutWindows(SystemPlatform(), "/v /r"));
}

}  // namespace
}  // namespace tarvo
