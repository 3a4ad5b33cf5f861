#include "catalogue/folder_monitor.h"

#include "base/absorb.h"

namespace tarvo {

void FolderMonitor::Start(Platform& platform, std::string_view folder) {
  watch_.reset();
  watch_ = platform.WatchFolder(folder);
}

std::string FolderMonitor::Stop() {
  if (!watch_) return {};
  std::string newest = watch_->NewestFile();
  watch_.reset();
  return newest;
}

void FileMonitor(Platform& platform, FolderMonitor& monitor, std::string_view pth) {
  if (!pth.empty()) {
    monitor.Start(platform, pth);
    return;
  }
  const std::string file = monitor.Stop();
  if (!file.empty()) showfile(platform, file);
}

void showfile(Platform& platform, std::string_view fil) {
  // The file lies where it was written; that it cannot be shown loses nothing.
  Absorb([&] { platform.ShowFile(fil); });
}

}  // namespace tarvo
