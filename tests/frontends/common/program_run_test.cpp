#include "frontends/common/program_run.h"

#include <gtest/gtest.h>

namespace tarvo {
namespace {

TEST(ArgumentsTest, AreJoinedByOneBlank) {
  const char* none[] = {"tarvo"};
  const char* several[] = {"tarvo", "-style", "", "a b"};
  EXPECT_EQ(JoinArguments(1, none), "");
  EXPECT_EQ(JoinArguments(4, several), "-style  a b");
}

TEST(RunWithoutWindowsTest, LeavesArgumentsThatAskForWindowsAlone) {
  EXPECT_FALSE(RunWithoutWindows(SystemPlatform(), ""));
  EXPECT_FALSE(RunWithoutWindows(SystemPlatform(), "/v /r"));
}

}  // namespace
}  // namespace tarvo
