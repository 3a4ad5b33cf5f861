#include "platform/windows/naming.h"

#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

#include "platform/windows/file_status.h"
#include "platform/windows/handle.h"
#include "platform/windows/system_path.h"
#include "platform/windows/windows_error.h"

namespace tarvo {
namespace {

RuntimeError AccessError(std::string_view path) {
  return RuntimeError::About(kPathFileAccessError, std::string(path));
}

// Names of the system that some compilers' headers lack.
constexpr auto kRenameInfoEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);
constexpr DWORD kReplace = 0x1;
constexpr DWORD kReplaceOpenFiles = 0x2;
constexpr DWORD kReplaceReadOnlyFiles = 0x40;

// Renames in the way of newer systems: what has the new name is replaced even while it is open or
// read-only. Gives the system's code.
DWORD RenameReplacingOpenFiles(const std::wstring& from, const std::wstring& to) {
  const KernelHandle file(::CreateFileW(
      from.c_str(), DELETE | SYNCHRONIZE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
      nullptr, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  if (!IsOpen(file)) return ::GetLastError();
  constexpr std::size_t kNameOffset = offsetof(FILE_RENAME_INFO, FileName);
  const std::size_t nameSize = to.size() * sizeof(wchar_t);
  std::vector<std::byte> buffer(kNameOffset + nameSize + sizeof(wchar_t));
  FILE_RENAME_INFO request{};
  request.Flags = kReplace | kReplaceOpenFiles | kReplaceReadOnlyFiles;
  request.FileNameLength = static_cast<DWORD>(nameSize);
  std::memcpy(buffer.data(), &request, kNameOffset);
  std::memcpy(buffer.data() + kNameOffset, to.c_str(), nameSize);
  const bool done = ::SetFileInformationByHandle(file.get(), kRenameInfoEx, buffer.data(),
                                                 static_cast<DWORD>(buffer.size()));
  return done ? ERROR_SUCCESS : ::GetLastError();
}

// Renames in the way of older systems and of drives without the newer one. A read-only file is in
// the way there.
DWORD RenameReplacing(const std::wstring& from, const std::wstring& to) {
  if (::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING)) return ERROR_SUCCESS;
  const DWORD code = ::GetLastError();
  const DWORD attributes = ::GetFileAttributesW(to.c_str());
  const bool isReadOnly = code == ERROR_ACCESS_DENIED && attributes != INVALID_FILE_ATTRIBUTES &&
                          (attributes & FILE_ATTRIBUTE_READONLY) != 0;
  if (!isReadOnly || !::SetFileAttributesW(to.c_str(), FILE_ATTRIBUTE_NORMAL)) return code;
  if (::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING)) return ERROR_SUCCESS;
  const DWORD secondCode = ::GetLastError();
  ::SetFileAttributesW(to.c_str(), attributes);
  return secondCode;
}

bool MeansUnknownRequest(DWORD code) {
  return code == ERROR_INVALID_PARAMETER || code == ERROR_INVALID_FUNCTION ||
         code == ERROR_NOT_SUPPORTED || code == ERROR_CALL_NOT_IMPLEMENTED ||
         code == ERROR_INVALID_LEVEL;
}

}  // namespace

void MakeWindowsFolder(std::string_view path) {
  if (::CreateDirectoryW(SystemPath(path).c_str(), nullptr)) return;
  throw FolderErrorFromCode(::GetLastError(), path);
}

void RenameWindowsFile(std::string_view path, std::string_view newPath) {
  const std::wstring from = SystemPath(path);
  const std::wstring to = SystemPath(newPath);
  if (to.empty()) throw RuntimeError(kPathNotFound);
  const DWORD attributes = ::GetFileAttributesW(from.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) throw ErrorFromCode(::GetLastError(), path);
  // A folder's name is never given to a file, a link to a folder may be replaced.
  if (IsFolderAt(to) && !IsLinkAt(to)) throw AccessError(newPath);
  DWORD code = RenameReplacingOpenFiles(from, to);
  if (MeansUnknownRequest(code)) code = RenameReplacing(from, to);
  if (code != ERROR_SUCCESS) throw ErrorFromCode(code, newPath);
}

void RemoveWindowsFile(std::string_view path) {
  const std::wstring name = SystemPath(path);
  const DWORD attributes = ::GetFileAttributesW(name.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) throw ErrorFromCode(::GetLastError(), path);
  const bool actsAsFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  if (actsAsFolder && !IsLinkAt(name)) throw AccessError(path);
  const bool done = actsAsFolder ? ::RemoveDirectoryW(name.c_str()) : ::DeleteFileW(name.c_str());
  if (!done) throw ErrorFromCode(::GetLastError(), path);
}

void RemoveWindowsFolder(std::string_view path) {
  const std::wstring name = SystemPath(path);
  const DWORD attributes = ::GetFileAttributesW(name.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) throw FolderErrorFromCode(::GetLastError(), path);
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0 || IsLinkAt(name)) throw AccessError(path);
  if (!::RemoveDirectoryW(name.c_str())) throw FolderErrorFromCode(::GetLastError(), path);
}

}  // namespace tarvo
