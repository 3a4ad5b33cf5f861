#include "platform/linux/errno_error.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace tarvo {
namespace {

struct ErrnoRow {
  int code;
  int number;
  const char* description;
};

TEST(ErrnoError, HasTheClassicNumberAndText) {
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
    const RuntimeError error = ErrorFromErrno(row.code);
    EXPECT_EQ(error.Number(), row.number) << "errno " << row.code;
    EXPECT_EQ(error.Description(), row.description) << "errno " << row.code;
  }
}

TEST(ErrnoError, NamesItsSubject) {
  EXPECT_EQ(ErrorFromErrno(ENOENT, "/data/Drivers").Description(), "File not found: /data/Drivers");
}

}  // namespace
}  // namespace tarvo
