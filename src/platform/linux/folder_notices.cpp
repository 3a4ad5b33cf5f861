#include "platform/linux/folder_notices.h"

#include <sys/inotify.h>

#include <array>
#include <cstring>

namespace tarvo {

FolderNotices::FolderNotices() : source_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}

void FolderNotices::Watch(const WalkedFolder& folder) {
  if (source_.Get() < 0) return;
  // By its descriptor: it has been entered, so its path may be of any length and change at any
  // time.
  const std::string path = "/proc/self/fd/" + std::to_string(folder.descriptor.Get());
  const int watch =
      ::inotify_add_watch(source_.Get(), path.c_str(), IN_CREATE | IN_MODIFY | IN_MOVED_TO);
  if (watch < 0) return;
  watched_[watch] = folder.identity;
  last_[folder.identity];
}

void FolderNotices::Read() {
  if (source_.Get() < 0) return;
  constexpr std::size_t kBufferSize = 65536;
  alignas(inotify_event) std::array<char, kBufferSize> buffer;
  for (;;) {
    const ssize_t size = ::read(source_.Get(), buffer.data(), buffer.size());
    if (size <= 0) return;
    for (ssize_t at = 0; at < size;) {
      inotify_event event;
      const char* start = buffer.data() + at;
      std::memcpy(&event, start, sizeof event);
      // The name is filled up with NULs.
      Keep(event.wd, event.mask, event.len > 0 ? start + sizeof event : "");
      at += static_cast<ssize_t>(sizeof event + event.len);
    }
  }
}

void FolderNotices::Keep(int watch, std::uint32_t kind, std::string_view name) {
  if ((kind & IN_Q_OVERFLOW) != 0) areIncomplete_ = true;
  const auto watched = watched_.find(watch);
  if (watched == watched_.end()) return;
  if ((kind & IN_IGNORED) != 0) {
    // The folder is gone; what it is known by may come to another one.
    last_.erase(watched->second);
    watched_.erase(watched);
    return;
  }
  if (!name.empty()) last_[watched->second][std::string(name)] = ++count_;
}

FolderNotices::Order FolderNotices::LastOf(FileIdentity folder, const std::string& name) const {
  const auto names = last_.find(folder);
  if (names == last_.end()) return 0;
  const auto order = names->second.find(name);
  return order == names->second.end() ? 0 : order->second;
}

}  // namespace tarvo
