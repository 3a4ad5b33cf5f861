#include "base/runtime_error.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace tarvo {
namespace {

struct ErrnoRow {
  int code;
  int number;
  const char* description;
};

TEST(RuntimeError, OfTheSystemHasTheClassicNumberAndText) {
  const ErrnoRow rows[] = {
      {EINVAL, 5, "Invalid procedure call or argument"},
      {ENAMETOOLONG, 52, "Bad file name or number"},
      {EILSEQ, 52, "Bad file name or number"},
      {ENOENT, 53, "File not found"},
      {EBADF, 54, "Bad file mode"},
      {EIO, 57, "Device I/O error"},
      {ENOSPC, 61, "Disk full"},
      {EDQUOT, 61, "Disk full"},
      {EFBIG, 61, "Disk full"},
      {EMFILE, 67, "Too many files"},
      {ENFILE, 67, "Too many files"},
      {ENXIO, 68, "Device unavailable"},
      {ENODEV, 68, "Device unavailable"},
      {EACCES, 70, "Permission denied"},
      {EPERM, 70, "Permission denied"},
      {ETXTBSY, 70, "Permission denied"},
      {EISDIR, 75, "Path/File access error"},
      {EEXIST, 75, "Path/File access error"},
      {ENOTEMPTY, 75, "Path/File access error"},
      {EROFS, 75, "Path/File access error"},
      {EBUSY, 75, "Path/File access error"},
      {ENOTDIR, 76, "Path not found"},
      {ELOOP, 76, "Path not found"},
      {ENOTTY, 57, "Device I/O error"},  // stands for all that have no row of their own
  };
  for (const ErrnoRow& row : rows) {
    const RuntimeError error = RuntimeError::FromErrno(row.code);
    EXPECT_EQ(error.Number(), row.number) << "errno " << row.code;
    EXPECT_EQ(error.Description(), row.description) << "errno " << row.code;
  }
}

TEST(RuntimeError, OfTheSystemNamesItsSubject) {
  const RuntimeError error = RuntimeError::FromErrno(ENOENT, "/data/Drivers");
  EXPECT_EQ(error.Description(), "File not found: /data/Drivers");
  EXPECT_STREQ(error.what(), "File not found: /data/Drivers");
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
