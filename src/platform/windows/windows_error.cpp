#include "platform/windows/windows_error.h"

#include <string>

namespace tarvo {
namespace {

struct CodeAndNumber {
  DWORD code;
  int number;
};

constexpr CodeAndNumber kNumbers[] = {
    {ERROR_BAD_FORMAT, kInvalidProcedureCall},
    {ERROR_INVALID_PARAMETER, kInvalidProcedureCall},
    {ERROR_INVALID_EXE_SIGNATURE, kInvalidProcedureCall},
    {ERROR_BAD_EXE_FORMAT, kInvalidProcedureCall},
    {ERROR_EXE_MACHINE_TYPE_MISMATCH, kInvalidProcedureCall},
    {ERROR_INVALID_NAME, kBadFileName},
    {ERROR_BAD_PATHNAME, kBadFileName},
    {ERROR_FILENAME_EXCED_RANGE, kBadFileName},
    {ERROR_FILE_NOT_FOUND, kFileNotFound},
    {ERROR_NO_MORE_FILES, kFileNotFound},
    {ERROR_MOD_NOT_FOUND, kFileNotFound},
    {ERROR_NO_ASSOCIATION, kFileNotFound},
    {ERROR_DLL_NOT_FOUND, kFileNotFound},
    {ERROR_INVALID_HANDLE, kBadFileMode},
    {ERROR_DISK_FULL, kDiskFull},
    {ERROR_HANDLE_DISK_FULL, kDiskFull},
    {kDiskQuotaExceeded, kDiskFull},
    {ERROR_FILE_TOO_LARGE, kDiskFull},
    {ERROR_TOO_MANY_OPEN_FILES, kTooManyFiles},
    {ERROR_NO_SYSTEM_RESOURCES, kTooManyFiles},
    {ERROR_INVALID_DRIVE, kDeviceUnavailable},
    {ERROR_NOT_READY, kDeviceUnavailable},
    {ERROR_ACCESS_DENIED, kPermissionDenied},
    {ERROR_WRITE_PROTECT, kPermissionDenied},
    {ERROR_SHARING_VIOLATION, kPermissionDenied},
    {ERROR_LOCK_VIOLATION, kPermissionDenied},
    {ERROR_NETWORK_ACCESS_DENIED, kPermissionDenied},
    {ERROR_DELETE_PENDING, kPermissionDenied},
    {kElevationRequired, kPermissionDenied},
    {ERROR_CANCELLED, kPermissionDenied},
    {ERROR_USER_MAPPED_FILE, kPermissionDenied},
    {ERROR_PRIVILEGE_NOT_HELD, kPermissionDenied},
    {ERROR_CURRENT_DIRECTORY, kPathFileAccessError},
    {ERROR_NOT_SAME_DEVICE, kPathFileAccessError},
    {ERROR_FILE_EXISTS, kPathFileAccessError},
    {ERROR_DIR_NOT_EMPTY, kPathFileAccessError},
    {ERROR_ALREADY_EXISTS, kPathFileAccessError},
    {kDirectoryNotSupported, kPathFileAccessError},
    {ERROR_PATH_NOT_FOUND, kPathNotFound},
    {ERROR_BAD_NETPATH, kPathNotFound},
    {ERROR_BAD_NET_NAME, kPathNotFound},
    {ERROR_DIRECTORY, kPathNotFound},
    {ERROR_CANT_RESOLVE_FILENAME, kPathNotFound},
};

int NumberOf(DWORD code) {
  for (const CodeAndNumber& row : kNumbers) {
    if (row.code == code) return row.number;
  }
  return kDeviceIoError;
}

}  // namespace

RuntimeError ErrorFromCode(DWORD code, std::string_view subject) {
  return RuntimeError::About(NumberOf(code), std::string(subject));
}

RuntimeError FolderErrorFromCode(DWORD code, std::string_view path) {
  return ErrorFromCode(code == ERROR_FILE_NOT_FOUND ? ERROR_PATH_NOT_FOUND : code, path);
}

}  // namespace tarvo
