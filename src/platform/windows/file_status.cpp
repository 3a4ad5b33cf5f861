#include "platform/windows/file_status.h"

#include "platform/platform.h"
#include "platform/windows/handle.h"
#include "platform/windows/system_path.h"
#include "platform/windows/windows_error.h"

namespace tarvo {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// What may be known of anything that has a name, files in use and folders included.
KernelHandle OpenToLook(const std::wstring& path) {
  return KernelHandle(::CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

// The attributes of what a path names, links followed.
std::optional<DWORD> AttributesAt(const std::wstring& path) {
  const DWORD attributes = ::GetFileAttributesW(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return std::nullopt;
  if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return attributes;
  const KernelHandle target = OpenToLook(path);
  BY_HANDLE_FILE_INFORMATION information;
  if (!IsOpen(target) || !::GetFileInformationByHandle(target.get(), &information)) {
    return std::nullopt;
  }
  return information.dwFileAttributes;
}

// Whether a file, a link itself included, has several names.
bool HasSeveralNames(const std::wstring& path) {
  const KernelHandle file(
      ::CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr, OPEN_EXISTING,
                    FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
  BY_HANDLE_FILE_INFORMATION information;
  return IsOpen(file) && ::GetFileInformationByHandle(file.get(), &information) &&
         (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 &&
         information.nNumberOfLinks > 1;
}

}  // namespace

std::optional<unsigned> WindowsAttributes(std::string_view path) {
  constexpr DWORD kTold =
      kReadOnly | kHidden | FILE_ATTRIBUTE_SYSTEM | kDirectory | FILE_ATTRIBUTE_ARCHIVE;
  try {
    const std::optional<DWORD> attributes = AttributesAt(SystemPath(path));
    if (attributes) return *attributes & kTold;
  } catch (const RuntimeError&) {
    // The path is none.
  }
  return std::nullopt;
}

bool IsWindowsLink(std::string_view path) {
  try {
    return IsLinkAt(SystemPath(path));
  } catch (const RuntimeError&) {
    return false;  // the path is none
  }
}

bool HasOtherWindowsNames(std::string_view path) {
  try {
    return HasSeveralNames(SystemPath(path));
  } catch (const RuntimeError&) {
    return false;  // the path is none
  }
}

void SetWindowsAttributes(std::string_view path, unsigned attributes) {
  const std::wstring name = SystemPath(path);
  const DWORD before = ::GetFileAttributesW(name.c_str());
  if (before == INVALID_FILE_ATTRIBUTES) throw ErrorFromCode(::GetLastError(), path);
  if (IsLinkAt(name) || HasSeveralNames(name)) return;
  const DWORD others = before & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY);
  DWORD wanted = (attributes & kReadOnly) != 0 ? others | FILE_ATTRIBUTE_READONLY : others;
  // Nothing to change is no error for somebody else's file, which may be deleted all the same.
  if (wanted == before) return;
  if (wanted == 0) wanted = FILE_ATTRIBUTE_NORMAL;
  if (!::SetFileAttributesW(name.c_str(), wanted)) throw ErrorFromCode(::GetLastError(), path);
}

bool IsLinkTag(DWORD attributes, DWORD tag) {
  // Wine shows a link to a folder without a tag.
  const bool isLink = tag == IO_REPARSE_TAG_RESERVED_ZERO || IsReparseTagNameSurrogate(tag);
  return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && isLink;
}

bool IsFolderAt(const std::wstring& path) {
  const std::optional<DWORD> attributes = AttributesAt(path);
  return attributes && (*attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsLinkAt(const std::wstring& path) {
  const DWORD attributes = ::GetFileAttributesW(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return false;
  if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return false;
  // A listing tells the tag of any name but a root's, which is no link.
  WIN32_FIND_DATAW found;
  const HANDLE listing =
      ::FindFirstFileExW(path.c_str(), FindExInfoBasic, &found, FindExSearchNameMatch, nullptr, 0);
  if (listing == INVALID_HANDLE_VALUE) return false;
  ::FindClose(listing);
  return IsLinkTag(found.dwFileAttributes, found.dwReserved0);
}

}  // namespace tarvo
