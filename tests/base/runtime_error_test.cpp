#include "base/runtime_error.h"

#include <gtest/gtest.h>

namespace tarvo {
namespace {

TEST(RuntimeError, NamesItsSubjectBehindTheStandardDescription) {
  const RuntimeError error = RuntimeError::About(53, "/data/Drivers");
  EXPECT_EQ(error.Number(), 53);
  EXPECT_EQ(error.Description(), "File not found: /data/Drivers");
  EXPECT_STREQ(error.what(), "File not found: /data/Drivers");
  EXPECT_EQ(RuntimeError::About(76, "").Description(), "Path not found");
}

TEST(RuntimeError, HasTheStandardDescriptionOfItsNumber) {
  EXPECT_EQ(RuntimeError(6).Description(), "Overflow");
  EXPECT_EQ(RuntimeError(9).Description(), "Subscript out of range");
  EXPECT_EQ(RuntimeError(13).Description(), "Type mismatch");
  EXPECT_EQ(RuntimeError(380).Description(), "Invalid property value");
  EXPECT_EQ(RuntimeError(481).Description(), "Invalid picture");
  EXPECT_EQ(RuntimeError(32755).Description(), "Cancel was selected");
  EXPECT_EQ(RuntimeError(35602).Description(), "Key is not unique in collection");
  EXPECT_EQ(RuntimeError(12345).Description(), "Application-defined or object-defined error");
}

TEST(RuntimeError, ShowsNumberAndDescriptionWithAnEmptyLineBetween) {
  EXPECT_EQ(RuntimeError(5).StandardMessage(),
            "Run-time error '5':\n\nInvalid procedure call or argument");
  EXPECT_EQ(RuntimeError(76, "Path not found: /x").StandardMessage(),
            "Run-time error '76':\n\nPath not found: /x");
}

}  // namespace
}  // namespace tarvo
