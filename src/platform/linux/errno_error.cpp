#include "platform/linux/errno_error.h"

#include <cerrno>

namespace tarvo {
namespace {

struct ErrnoAndNumber {
  int code;
  int number;
};

constexpr ErrnoAndNumber kErrnoNumbers[] = {
    {EINVAL, kInvalidProcedureCall},
    {ENAMETOOLONG, kBadFileName},
    {EILSEQ, kBadFileName},
    {ENOENT, kFileNotFound},
    {ENOTDIR, kPathNotFound},
    {ELOOP, kPathNotFound},
    {EISDIR, kPathFileAccessError},
    {EEXIST, kPathFileAccessError},
    {ENOTEMPTY, kPathFileAccessError},
    {EROFS, kPathFileAccessError},
    {EBUSY, kPathFileAccessError},
    {EACCES, kPermissionDenied},
    {EPERM, kPermissionDenied},
    {ETXTBSY, kPermissionDenied},
    {ENOSPC, kDiskFull},
    {EDQUOT, kDiskFull},
    {EFBIG, kDiskFull},
    {EMFILE, kTooManyFiles},
    {ENFILE, kTooManyFiles},
    {EBADF, kBadFileMode},
    {EIO, kDeviceIoError},
    {ENXIO, kDeviceUnavailable},
    {ENODEV, kDeviceUnavailable},
};

int NumberOfErrno(int code) {
  for (const auto& row : kErrnoNumbers) {
    if (row.code == code) return row.number;
  }
  return kDeviceIoError;
}

}  // namespace

RuntimeError ErrorFromErrno(int code, const std::string& subject) {
  return RuntimeError::About(NumberOfErrno(code), subject);
}

}  // namespace tarvo
