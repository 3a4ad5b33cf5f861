#include "platform/windows/visible_tree.h"

#include <utility>
#include <vector>

#include "base/paths.h"
#include "platform/windows/file_status.h"
#include "platform/windows/folder_listing.h"
#include "platform/windows/handle.h"
#include "platform/windows/system_path.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/windows_error.h"

namespace tarvo {
namespace {

FolderIdentity IdentityOf(const std::string& path) {
  const KernelHandle folder(::CreateFileW(SystemPath(path).c_str(), FILE_READ_ATTRIBUTES,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                          nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS,
                                          nullptr));
  BY_HANDLE_FILE_INFORMATION information;
  if (!IsOpen(folder) || !::GetFileInformationByHandle(folder.get(), &information)) return 0;
  return std::uint64_t{information.nFileIndexHigh} << 32 | information.nFileIndexLow;
}

WalkedFile FileOf(const WIN32_FIND_DATAW& found) {
  WalkedFile file;
  file.name = Narrow(found.cFileName);
  file.size = std::uint64_t{found.nFileSizeHigh} << 32 | found.nFileSizeLow;
  file.written = TicksOf(found.ftLastWriteTime);
  file.made = TicksOf(found.ftCreationTime);
  return file;
}

}  // namespace

std::uint64_t TicksOf(const FILETIME& time) {
  return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

void WalkVisibleTree(std::string_view root,
                     const std::function<void(const WalkedFolder&)>& onFolder,
                     const std::function<void(const WalkedFolder&, const WalkedFile&)>& onFile) {
  std::vector<std::string> toCome;
  const auto walkOne = [&](const std::string& next) {
    const std::string path = next.empty() ? std::string(root) : JoinPath(root, next);
    const WalkedFolder folder{next, IdentityOf(path)};
    bool isReported = false;
    const auto report = [&] {
      if (!std::exchange(isReported, true)) onFolder(folder);
    };
    ForEachIn(path, [&](const WIN32_FIND_DATAW& found) {
      report();
      const DWORD attributes = found.dwFileAttributes;
      const bool isHidden = (attributes & FILE_ATTRIBUTE_HIDDEN) != 0;
      if (isHidden || IsLinkTag(attributes, found.dwReserved0)) return;
      if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        toCome.push_back(JoinPath(next, Narrow(found.cFileName)));
      } else {
        onFile(folder, FileOf(found));
      }
    });
    report();
  };

  walkOne({});
  while (!toCome.empty()) {
    const std::string next = std::move(toCome.back());
    toCome.pop_back();
    try {
      walkOne(next);
    } catch (const RuntimeError&) {
      // Not readable, or gone since its parent was listed.
    }
  }
}

}  // namespace tarvo
