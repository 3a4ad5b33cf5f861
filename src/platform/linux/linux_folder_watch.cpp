#include "platform/linux/linux_folder_watch.h"

#include <time.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <map>
#include <string>
#include <tuple>
#include <utility>

#include "base/paths.h"
#include "base/runtime_error.h"
#include "platform/linux/folder_memory.h"
#include "platform/linux/folder_notices.h"
#include "platform/linux/long_path.h"
#include "platform/linux/visible_tree.h"

namespace tarvo {
namespace {

using Moment = std::pair<time_t, long>;  // seconds, nanoseconds

Moment MomentOf(const timespec& time) { return {time.tv_sec, time.tv_nsec}; }

// The clock that the system takes the times of files from: it stands still for some milliseconds at
// a time.
Moment FileClock() {
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME_COARSE, &now);
  return MomentOf(now);
}

// The path from the root on, for later, when another folder may be the current one.
std::string FromTheRoot(std::string_view path) {
  if (path.empty() || path[0] == '/') return std::string(path);
  std::error_code error;
  const std::string current = std::filesystem::current_path(error);
  if (error) throw FolderError(error.value(), path);
  return JoinPath(current, path);
}

// A file that has been made or written.
struct News {
  std::string path;  // from the watched folder
  Moment time;
  FolderNotices::Order notice = 0;     // the last one of the file
  FolderNotices::Order noEarlier = 0;  // the notice of the folder that came with the file in it
};

class LinuxFolderWatch final : public FolderWatch {
 public:
  explicit LinuxFolderWatch(std::string_view folder)
      : folder_(folder), path_(FromTheRoot(folder)), begin_(FileClock()) {
    WalkVisibleTree(
        path_,
        [this](const WalkedFolder& found) {
          notices_.Watch(found);
          memory_.Remember(found);
        },
        [this](const WalkedFolder& found, const std::string& name, const struct stat& status) {
          memory_.Remember(found, name, status);
        });
  }

  std::string NewestFile() override {
    try {
      notices_.Read();
      const std::string newest = FindNewest();
      return newest.empty() ? newest : JoinPath(folder_, newest);
    } catch (const std::exception&) {
      return {};  // the folder is gone, or there is no memory
    }
  }

 private:
  std::string FindNewest() {
    end_ = FileClock();
    News noticed;
    News silent;
    // When the folders that are not watched came.
    std::map<FileIdentity, FolderNotices::Order> arrivals;
    WalkVisibleTree(
        path_,
        [&](const WalkedFolder& folder) {
          if (notices_.IsWatched(folder.identity)) return;
          const std::string name(FileNameOf(folder.path));
          arrivals[folder.identity] =
              std::max(arrivals[folder.parent], notices_.LastOf(folder.parent, name));
        },
        [&](const WalkedFolder& folder, const std::string& name, const struct stat& status) {
          const FolderNotices::Order notice = notices_.LastOf(folder.identity, name);
          if (notice == 0 && !memory_.IsNews(folder, name, status)) return;
          News news{JoinPath(folder.path, name), TimeOf(status), notice, 0};
          if (notice != 0 && !notices_.AreIncomplete()) {
            if (notice > noticed.notice) noticed = std::move(news);
            return;
          }
          const auto arrival = arrivals.find(folder.identity);
          if (arrival != arrivals.end()) news.noEarlier = arrival->second;
          if (std::tie(news.time, news.path) > std::tie(silent.time, silent.path)) {
            silent = std::move(news);
          }
        });
    return Later(noticed, silent).path;
  }

  // Of the last file that the system told of and the last one that only a listing tells of, the one
  // written later.
  const News& Later(const News& noticed, const News& silent) const {
    if (silent.path.empty()) return noticed;
    if (noticed.path.empty() || silent.noEarlier > noticed.notice) return silent;
    return silent.time > noticed.time ? silent : noticed;
  }

  // When a file was written. A time outside of the watch was given to it by whoever wrote it; then
  // the time of the last change to the file itself, which nobody can choose, tells when that was.
  Moment TimeOf(const struct stat& status) const {
    const Moment written = MomentOf(status.st_mtim);
    return written < begin_ || written > end_ ? MomentOf(status.st_ctim) : written;
  }

  const std::string folder_;  // as it was given
  const std::string path_;
  const Moment begin_;
  Moment end_;
  FolderNotices notices_;
  FolderMemory memory_;
};

}  // namespace

std::unique_ptr<FolderWatch> WatchLinuxFolder(std::string_view folder) {
  return std::make_unique<LinuxFolderWatch>(folder);
}

}  // namespace tarvo
