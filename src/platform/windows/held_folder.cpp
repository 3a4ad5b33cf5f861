#include "platform/windows/held_folder.h"

#include <string>
#include <utility>
#include <vector>

#include "platform/windows/file_status.h"
#include "platform/windows/handle.h"
#include "platform/windows/system_path.h"
#include "platform/windows/windows_error.h"

namespace tarvo {
namespace {

class WindowsHeldFolder;

// Those that live. The program reaches the system from one thread only.
std::vector<const WindowsHeldFolder*>& HeldFolders() {
  static std::vector<const WindowsHeldFolder*> folders;
  return folders;
}

// Whoever opens a folder without sharing the right to delete it keeps it from being renamed and
// removed, as long as the handle is open.
class WindowsHeldFolder final : public HeldFolder {
 public:
  WindowsHeldFolder(std::wstring path, KernelHandle folder)
      : path_(std::move(path)), folder_(std::move(folder)) {
    HeldFolders().push_back(this);
  }
  ~WindowsHeldFolder() override { std::erase(HeldFolders(), this); }
  WindowsHeldFolder(const WindowsHeldFolder&) = delete;
  WindowsHeldFolder& operator=(const WindowsHeldFolder&) = delete;

  bool IsAbove(const std::wstring& path) const {
    const std::size_t size = path_.size();
    if (path.size() <= size || (path[size] != L'\\' && !path_.ends_with(L'\\'))) return false;
    const int count = static_cast<int>(size);
    return ::CompareStringOrdinal(path.data(), count, path_.data(), count, TRUE) == CSTR_EQUAL;
  }

 private:
  std::wstring path_;
  KernelHandle folder_;
};

bool IsBelowAHeldOne(const std::wstring& path) {
  for (const WindowsHeldFolder* folder : HeldFolders()) {
    if (folder->IsAbove(path)) return true;
  }
  return false;
}

}  // namespace

std::unique_ptr<HeldFolder> HoldWindowsFolder(std::string_view path) {
  if (path.empty()) throw RuntimeError(kPathNotFound);
  const std::wstring name = SystemPath(path);
  KernelHandle folder(::CreateFileW(name.c_str(), FILE_LIST_DIRECTORY,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  if (!IsOpen(folder)) throw FolderErrorFromCode(::GetLastError(), path);
  if (!IsFolderAt(name) || (IsLinkAt(name) && IsBelowAHeldOne(name))) {
    throw RuntimeError::About(kPathNotFound, std::string(path));
  }
  return std::make_unique<WindowsHeldFolder>(name, std::move(folder));
}

}  // namespace tarvo
