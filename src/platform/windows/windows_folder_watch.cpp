#include "platform/windows/windows_folder_watch.h"

#include <exception>
#include <string>
#include <tuple>
#include <utility>

#include "base/paths.h"
#include "platform/windows/file_status.h"
#include "platform/windows/folder_memory.h"
#include "platform/windows/folder_notices.h"
#include "platform/windows/system_path.h"
#include "platform/windows/visible_tree.h"
#include "platform/windows/windows_error.h"

namespace tarvo {
namespace {

std::uint64_t FileClock() {
  FILETIME now;
  ::GetSystemTimeAsFileTime(&now);
  return TicksOf(now);
}

// The path from the root on, for later, when another folder may be the current one.
std::string FromTheRoot(std::string_view folder) {
  const std::wstring path = SystemPath(folder);
  if (!IsFolderAt(path)) throw RuntimeError::About(kPathNotFound, std::string(folder));
  return PlainPath(path);
}

// A file that has been made or written.
struct News {
  std::string path;  // from the watched folder
  std::uint64_t time = 0;
  FolderNotices::Order notice = 0;
};

class WindowsFolderWatch final : public FolderWatch {
 public:
  explicit WindowsFolderWatch(std::string_view folder)
      : folder_(folder), path_(FromTheRoot(folder)), begin_(FileClock()), notices_(path_) {
    WalkVisibleTree(
        path_, [this](const WalkedFolder& found) { memory_.Remember(found); },
        [this](const WalkedFolder& found, const WalkedFile& file) {
          memory_.Remember(found, file);
        });
  }

  std::string NewestFile() override {
    try {
      notices_.Read();
      News newest = FindNewest();
      // The notice of a file may come a moment after the file.
      constexpr int kMost = 20;
      for (int i = 0; i < kMost && IsUnnoticed(newest) && notices_.Await(); ++i) {
        newest = FindNewest();
      }
      return newest.path.empty() ? newest.path : JoinPath(folder_, newest.path);
    } catch (const std::exception&) {
      return {};  // the folder is gone, or there is no memory
    }
  }

 private:
  bool IsUnnoticed(const News& newest) const {
    return hasSilent_ && !notices_.AreIncomplete() && !newest.path.empty();
  }

  News FindNewest() {
    News noticed;
    News silent;
    WalkVisibleTree(
        path_, [](const WalkedFolder&) {},
        [&](const WalkedFolder& folder, const WalkedFile& file) {
          News news{JoinPath(folder.path, file.name), TimeOf(file), 0};
          news.notice = notices_.LastOf(news.path);
          if (news.notice == 0) {
            if (!memory_.IsNews(folder, file)) return;
            // It may have come with a folder, of which there is a notice.
            news.notice = notices_.LastOnTheWayTo(news.path);
          }
          const bool hasOrder = news.notice != 0 && !notices_.AreIncomplete();
          News& best = hasOrder ? noticed : silent;
          if (!hasOrder) news.notice = 0;
          if (std::tie(news.notice, news.time, news.path) >
              std::tie(best.notice, best.time, best.path)) {
            best = std::move(news);
          }
        });
    hasSilent_ = !silent.path.empty();
    if (!hasSilent_) return noticed;
    return noticed.path.empty() || silent.time > noticed.time ? silent : noticed;
  }

  // When a file was written. A time before the watch was given to it by whoever wrote it; then the
  // time when it was made tells more.
  std::uint64_t TimeOf(const WalkedFile& file) const {
    return file.written < begin_ ? file.made : file.written;
  }

  const std::string folder_;  // as it was given
  const std::string path_;
  const std::uint64_t begin_;
  FolderNotices notices_;
  FolderMemory memory_;
  bool hasSilent_ = false;  // a file has been found that there is no notice of
};

}  // namespace

std::unique_ptr<FolderWatch> WatchWindowsFolder(std::string_view folder) {
  return std::make_unique<WindowsFolderWatch>(folder);
}

}  // namespace tarvo
