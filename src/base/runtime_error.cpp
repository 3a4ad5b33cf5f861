#include "base/runtime_error.h"

#include <cerrno>
#include <utility>

namespace tarvo {
namespace {

struct NumberAndText {
  int number;
  const char* text;
};

constexpr NumberAndText kDescriptions[] = {
    {kInvalidProcedureCall, "Invalid procedure call or argument"},
    {kOverflow, "Overflow"},
    {kSubscriptOutOfRange, "Subscript out of range"},
    {kTypeMismatch, "Type mismatch"},
    {kInternalError, "Internal error"},
    {kBadFileName, "Bad file name or number"},
    {kFileNotFound, "File not found"},
    {kBadFileMode, "Bad file mode"},
    {kDeviceIoError, "Device I/O error"},
    {kFileAlreadyExists, "File already exists"},
    {kDiskFull, "Disk full"},
    {kTooManyFiles, "Too many files"},
    {kDeviceUnavailable, "Device unavailable"},
    {kPermissionDenied, "Permission denied"},
    {kPathFileAccessError, "Path/File access error"},
    {kPathNotFound, "Path not found"},
    {kInvalidFileFormat, "Invalid file format"},
    {kInvalidPropertyValue, "Invalid property value"},
    {kInvalidPicture, "Invalid picture"},
    {kDialogCancelled, "Cancel was selected"},
    {kIndexOutOfBounds, "Index out of bounds"},
    {kElementNotFound, "Element not found"},
    {kKeyNotUnique, "Key is not unique in collection"},
};

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

RuntimeError::RuntimeError(int number)
    : number_(number), description_(StandardDescription(number)) {}

RuntimeError::RuntimeError(int number, std::string description)
    : number_(number), description_(std::move(description)) {}

RuntimeError RuntimeError::FromErrno(int code, const std::string& subject) {
  const int number = NumberOfErrno(code);
  std::string description = StandardDescription(number);
  if (!subject.empty()) description += ": " + subject;
  return RuntimeError(number, std::move(description));
}

std::string RuntimeError::StandardMessage() const {
  return "Run-time error '" + std::to_string(number_) + "':\n\n" + description_;
}

std::string StandardDescription(int number) {
  for (const auto& row : kDescriptions) {
    if (row.number == number) return row.text;
  }
  return "Application-defined or object-defined error";
}

}  // namespace tarvo
