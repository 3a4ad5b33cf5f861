#include "platform/windows/folder_notices.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "base/paths.h"
#include "platform/windows/system_path.h"
#include "platform/windows/wide_text.h"

namespace tarvo {
namespace {

// The most that drives on other computers take.
constexpr std::size_t kBufferSize = 65536;

}  // namespace

FolderNotices::FolderNotices(std::string_view folder)
    : folder_(::CreateFileW(SystemPath(folder).c_str(), FILE_LIST_DIRECTORY,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OVERLAPPED,
                            nullptr)),
      event_(::CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      buffer_(kBufferSize / sizeof(DWORD)) {
  Ask();
}

FolderNotices::~FolderNotices() {
  if (!isUnderWay_) return;
  ::CancelIoEx(folder_.get(), &request_);
  DWORD size = 0;
  ::GetOverlappedResult(folder_.get(), &request_, &size, TRUE);
}

void FolderNotices::Ask() {
  if (!IsOpen(folder_) || !IsOpen(event_)) return;
  request_ = {};
  request_.hEvent = event_.get();
  constexpr DWORD kKinds = FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_DIR_NAME |
                           FILE_NOTIFY_CHANGE_SIZE | FILE_NOTIFY_CHANGE_LAST_WRITE;
  isUnderWay_ = ::ReadDirectoryChangesW(folder_.get(), buffer_.data(), kBufferSize, TRUE, kKinds,
                                        nullptr, &request_, nullptr);
}

void FolderNotices::Read() {
  while (isUnderWay_) {
    DWORD size = 0;
    if (!::GetOverlappedResult(folder_.get(), &request_, &size, FALSE)) {
      if (::GetLastError() == ERROR_IO_INCOMPLETE) return;
      isUnderWay_ = false;  // the folder is gone, or the drive is
      areIncomplete_ = true;
      return;
    }
    isUnderWay_ = false;
    Take(size);
    Ask();
  }
}

bool FolderNotices::Await() {
  constexpr DWORD kPatience = 50;  // milliseconds
  if (!isUnderWay_ || ::WaitForSingleObject(event_.get(), kPatience) != WAIT_OBJECT_0) return false;
  Read();
  return true;
}

void FolderNotices::Take(std::size_t size) {
  // More has happened than there was room for.
  if (size == 0) areIncomplete_ = true;
  const char* const start = reinterpret_cast<const char*>(buffer_.data());
  constexpr std::size_t kNameOffset = offsetof(FILE_NOTIFY_INFORMATION, FileName);
  for (std::size_t at = 0; at + kNameOffset <= size;) {
    FILE_NOTIFY_INFORMATION notice;
    std::memcpy(&notice, start + at, kNameOffset);
    const std::size_t nameSize =
        std::min<std::size_t>(notice.FileNameLength, size - at - kNameOffset);
    std::wstring name(nameSize / sizeof(wchar_t), L'\0');
    std::memcpy(name.data(), start + at + kNameOffset, name.size() * sizeof(wchar_t));
    Keep(notice.Action, Narrow(name));
    if (notice.NextEntryOffset == 0) return;
    at += notice.NextEntryOffset;
  }
}

void FolderNotices::Keep(DWORD action, const std::string& path) {
  switch (action) {
    case FILE_ACTION_RENAMED_OLD_NAME:
      renamed_ = path;
      return;
    case FILE_ACTION_REMOVED:
      last_.erase(path);
      return;
    case FILE_ACTION_RENAMED_NEW_NAME:
      Rename(std::exchange(renamed_, {}), path);
      break;
    default:
      break;
  }
  last_[path] = ++count_;
}

// What a renamed folder holds has other paths from now on.
void FolderNotices::Rename(const std::string& path, const std::string& newPath) {
  if (path.empty()) return;
  last_.erase(path);
  const std::string inside = WithSeparator(path);
  std::vector<std::pair<std::string, Order>> moved;
  for (const auto& [name, order] : last_) {
    if (name.starts_with(inside)) moved.emplace_back(name, order);
  }
  for (const auto& [name, order] : moved) {
    last_.erase(name);
    last_[WithSeparator(newPath) + name.substr(inside.size())] = order;
  }
}

FolderNotices::Order FolderNotices::LastOf(const std::string& path) const {
  const auto found = last_.find(path);
  return found == last_.end() ? 0 : found->second;
}

FolderNotices::Order FolderNotices::LastOnTheWayTo(std::string_view path) const {
  Order last = 0;
  for (; !path.empty(); path = FolderOf(path)) last = std::max(last, LastOf(std::string(path)));
  return last;
}

}  // namespace tarvo
