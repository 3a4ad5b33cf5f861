#include "base/runtime_error.h"

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

}  // namespace

RuntimeError::RuntimeError(int number)
    : number_(number), description_(StandardDescription(number)) {}

RuntimeError::RuntimeError(int number, std::string description)
    : number_(number), description_(std::move(description)) {}

RuntimeError RuntimeError::About(int number, const std::string& subject) {
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
