#include "platform/windows/folder_listing.h"

#include <memory>
#include <string>

#include "platform/windows/file_status.h"
#include "platform/windows/system_path.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/windows_error.h"

namespace tarvo {
namespace {

struct CloseListing {
  using pointer = HANDLE;
  void operator()(HANDLE listing) const {
    if (listing != INVALID_HANDLE_VALUE) ::FindClose(listing);
  }
};

FolderEntry EntryOf(const WIN32_FIND_DATAW& found) {
  FolderEntry entry;
  entry.name = Narrow(found.cFileName);
  entry.isLink = IsLinkTag(found.dwFileAttributes, found.dwReserved0);
  entry.isFolder = !entry.isLink && (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  entry.isHidden = (found.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) != 0;
  return entry;
}

}  // namespace

std::vector<FolderEntry> ListWindowsFolder(std::string_view path) {
  std::vector<FolderEntry> entries;
  ForEachIn(path, [&](const WIN32_FIND_DATAW& found) { entries.push_back(EntryOf(found)); });
  return entries;
}

void ForEachIn(std::string_view folder, const std::function<void(const WIN32_FIND_DATAW&)>& take) {
  std::wstring pattern = SystemPath(folder);
  if (pattern.empty()) throw RuntimeError(kPathNotFound);
  pattern += pattern.back() == L'\\' ? L"*" : L"\\*";
  WIN32_FIND_DATAW found;
  const std::unique_ptr<HANDLE, CloseListing> listing(
      ::FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &found, FindExSearchNameMatch, nullptr,
                         FIND_FIRST_EX_LARGE_FETCH));
  if (listing.get() == INVALID_HANDLE_VALUE) {
    const DWORD code = ::GetLastError();
    if (!IsFolderAt(SystemPath(folder))) {
      throw RuntimeError::About(kPathNotFound, std::string(folder));
    }
    // An empty root has not even "." in it, so nothing matches.
    if (code == ERROR_FILE_NOT_FOUND) return;
    throw FolderErrorFromCode(code, folder);
  }
  do {
    const std::wstring_view name = found.cFileName;
    if (name != L"." && name != L"..") take(found);
  } while (::FindNextFileW(listing.get(), &found));
  const DWORD code = ::GetLastError();
  if (code != ERROR_NO_MORE_FILES) throw FolderErrorFromCode(code, folder);
}

}  // namespace tarvo
