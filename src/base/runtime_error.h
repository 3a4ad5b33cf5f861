#pragma once

#include <exception>
#include <string>

namespace tarvo {

// The classic numbers of the runtime's errors, as far as the program raises or tests them.
enum ErrorNumber : int {
  kInvalidProcedureCall = 5,
  kOverflow = 6,
  kSubscriptOutOfRange = 9,
  kTypeMismatch = 13,
  kInternalError = 51,
  kBadFileName = 52,
  kFileNotFound = 53,
  kBadFileMode = 54,
  kDeviceIoError = 57,
  kFileAlreadyExists = 58,
  kDiskFull = 61,
  kTooManyFiles = 67,
  kDeviceUnavailable = 68,
  kPermissionDenied = 70,
  kPathFileAccessError = 75,
  kPathNotFound = 76,
  kInvalidFileFormat = 321,
  kInvalidPropertyValue = 380,
  kInvalidPicture = 481,
  kDialogCancelled = 32755,
  kIndexOutOfBounds = 35600,
  kElementNotFound = 35601,
  kKeyNotUnique = 35602,
};

// A failure with a classic number and a description in English, which is what the user is shown
// when nothing handles it.
class RuntimeError : public std::exception {
 public:
  // An error with the number's standard description.
  explicit RuntimeError(int number);

  // An error whose description says more than the standard one.
  RuntimeError(int number, std::string description);

  // An error with the number's standard description, to which `subject`, when not empty, is
  // appended: the file or folder that it is about.
  static RuntimeError About(int number, const std::string& subject);

  int Number() const { return number_; }
  const std::string& Description() const { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

  // "Run-time error 'N':", an empty line, the description.
  std::string StandardMessage() const;

 private:
  int number_;
  std::string description_;
};

// The standard description of an error number.
std::string StandardDescription(int number);

}  // namespace tarvo
