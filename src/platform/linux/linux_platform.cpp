#include <fcntl.h>
#include <langinfo.h>
#include <locale.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>

#include "base/code_page.h"
#include "base/paths.h"
#include "base/runtime_error.h"
#include "platform/linux/desktop.h"
#include "platform/linux/errno_error.h"
#include "platform/linux/findings.h"
#include "platform/linux/folder_listing.h"
#include "platform/linux/held_folder.h"
#include "platform/linux/linux_file.h"
#include "platform/linux/linux_folder_watch.h"
#include "platform/linux/long_path.h"
#include "platform/linux/mime_registry.h"
#include "platform/linux/processes.h"
#include "platform/linux/special_folders.h"
#include "platform/linux/window_activation.h"
#include "platform/platform.h"

namespace tarvo {
namespace {

// The user's locale, read from the environment on purpose: what a toolkit does to the process's
// locale changes nothing here, and both programs read the same.
class UserLocale {
 public:
  UserLocale() : locale_(::newlocale(kCategories, "", nullptr)) {
    if (!locale_) locale_ = ::newlocale(kCategories, "C", nullptr);
  }
  ~UserLocale() { ::freelocale(locale_); }
  UserLocale(const UserLocale&) = delete;
  UserLocale& operator=(const UserLocale&) = delete;
  locale_t Get() const { return locale_; }

 private:
  // Only what is asked for here: a category that names a locale which is not installed makes the
  // whole call fail.
  static constexpr int kCategories = LC_CTYPE_MASK | LC_NUMERIC_MASK | LC_TIME_MASK;

  locale_t locale_;
};

// Read when it is first asked for, as most of what the terminal program does has no need of it.
locale_t TheUsersLocale() {
  static const UserLocale locale;
  return locale.Get();
}

struct LocalTime {
  tm calendar;
  double fraction;  // of a second
};

LocalTime ReadClock() {
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  LocalTime result{};
  ::localtime_r(&now.tv_sec, &result.calendar);
  result.fraction = static_cast<double>(now.tv_nsec) / 1e9;
  return result;
}

double SecondsOfDay(const LocalTime& time) {
  return time.calendar.tm_hour * 3600.0 + time.calendar.tm_min * 60.0 + time.calendar.tm_sec +
         time.fraction;
}

// Days from 30 December 1899 to a date of the Gregorian calendar.
double DayNumber(const tm& calendar) {
  tm noon{};
  noon.tm_year = calendar.tm_year;
  noon.tm_mon = calendar.tm_mon;
  noon.tm_mday = calendar.tm_mday;
  constexpr double kDaysFrom1899To1970 = 25569;
  return static_cast<double>(::timegm(&noon)) / 86400.0 + kDaysFrom1899To1970;
}

// The current folder; nothing, with errno set, when it has been removed.
std::optional<std::string> WorkingFolder() {
  const std::unique_ptr<char, decltype(&std::free)> path(::getcwd(nullptr, 0), &std::free);
  if (!path) return std::nullopt;
  return path.get();
}

// What a path names, symbolic links followed unless `flags` says otherwise; nothing when that
// cannot be reached.
std::optional<struct stat> StatusOf(std::string_view path, int flags = 0) {
  try {
    const ReachedPath reached = ReachPath(path);
    struct stat status;
    if (::fstatat(reached.Base(), reached.rest.c_str(), &status, flags) == 0) return status;
  } catch (const RuntimeError&) {
    // The front of a long path cannot be entered, or the path is none.
  }
  return std::nullopt;
}

// A folder's subfolders are no names of it.
bool IsKnownByOtherNames(const struct stat& status) {
  return !S_ISDIR(status.st_mode) && status.st_nlink > 1;
}

class LinuxPlatform final : public Platform {
 public:
  std::optional<std::string> SpecialFolder(int identifier) override {
    if (identifier == kCommonDocuments) return CommonDocumentsFolder(startFolder_);
    if (identifier == kPersonalDocuments) return UserDocumentsFolder();
    return std::nullopt;
  }

  std::string ProgramFolder() override {
    char path[PATH_MAX];
    const ssize_t size = ::readlink("/proc/self/exe", path, sizeof path);
    if (size <= 0) throw ErrorFromErrno(errno, "/proc/self/exe");
    return std::string(FolderOf({path, static_cast<std::size_t>(size)}));
  }

  std::string CurrentFolder() override {
    if (auto folder = WorkingFolder()) return *std::move(folder);
    throw FolderError(errno, "the current folder");
  }

  void ChangeCurrentFolder(std::string_view path) override {
    const Descriptor folder = ReachFolder(path);
    if (::fchdir(folder.Get()) != 0) throw FolderError(errno, path);
  }

  void ChangeCurrentDrive(char32_t) override {}

  bool IsDriveRoot(std::string_view path) override {
    return !path.empty() && path.find_first_not_of('/') == std::string_view::npos;
  }

  void MakeFolder(std::string_view path) override {
    const ReachedPath reached = ReachPath(path);
    if (::mkdirat(reached.Base(), reached.rest.c_str(), 0777) != 0) throw FolderError(errno, path);
  }

  std::unique_ptr<HeldFolder> HoldFolder(std::string_view path) override {
    return HoldLinuxFolder(path);
  }

  std::vector<FolderEntry> Entries(std::string_view folder) override {
    return ListLinuxFolder(folder);
  }

  std::optional<unsigned> Attributes(std::string_view path) override {
    const std::optional<struct stat> status = StatusOf(path);
    if (!status) return std::nullopt;
    unsigned attributes = kNormal;
    if (S_ISDIR(status->st_mode)) attributes |= kDirectory;
    if ((status->st_mode & S_IWUSR) == 0) attributes |= kReadOnly;
    const std::string_view name = FileNameOf(path);
    if (name.size() > 1 && name[0] == '.' && name != "..") attributes |= kHidden;
    return attributes;
  }

  bool IsLink(std::string_view path) override {
    const std::optional<struct stat> status = StatusOf(path, AT_SYMLINK_NOFOLLOW);
    return status && S_ISLNK(status->st_mode);
  }

  bool HasOtherNames(std::string_view path) override {
    const std::optional<struct stat> status = StatusOf(path, AT_SYMLINK_NOFOLLOW);
    return status && IsKnownByOtherNames(*status);
  }

  // Of the attributes only the owner's right to write can be set here.
  void SetAttributes(std::string_view path, unsigned attributes) override {
    const ReachedPath reached = ReachPath(path);
    const Descriptor file(
        ::openat(reached.Base(), reached.rest.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    if (file.Get() < 0) throw FileError(errno, reached, path);
    struct stat status;
    if (::fstat(file.Get(), &status) != 0) throw ErrorFromErrno(errno, std::string(path));
    if (S_ISLNK(status.st_mode) || IsKnownByOtherNames(status)) return;
    const mode_t others = status.st_mode & 07777 & ~static_cast<mode_t>(S_IWUSR);
    const mode_t mode = (attributes & kReadOnly) != 0 ? others : others | S_IWUSR;
    // Nothing to change is no error for somebody else's file, which may be deleted all the same.
    if (mode == (status.st_mode & 07777)) return;
    // The descriptor names the file itself, so that nothing put in its place meanwhile is changed.
    const std::string self = "/proc/self/fd/" + std::to_string(file.Get());
    if (::chmod(self.c_str(), mode) != 0) throw ErrorFromErrno(errno, std::string(path));
  }

  std::unique_ptr<File> OpenFile(std::string_view path, OpenFor use) override {
    return OpenLinuxFile(path, use);
  }

  std::unique_ptr<File> MakeFile(std::string_view path, FileUse use) override {
    return MakeLinuxFile(path, use);
  }

  void RenameFile(std::string_view path, std::string_view newPath) override {
    const ReachedPath from = ReachPath(path);
    const ReachedPath to = ReachPath(newPath);
    if (::renameat(from.Base(), from.rest.c_str(), to.Base(), to.rest.c_str()) == 0) return;
    const int code = errno;
    struct stat status;
    const bool isThere =
        ::fstatat(from.Base(), from.rest.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
    if (code == ENOENT && isThere) throw FolderError(code, newPath);
    throw FileError(code, from, path);
  }

  void RemoveFile(std::string_view path) override {
    const ReachedPath reached = ReachPath(path);
    if (::unlinkat(reached.Base(), reached.rest.c_str(), 0) != 0) {
      throw FileError(errno, reached, path);
    }
  }

  void RemoveFolder(std::string_view path) override {
    const ReachedPath reached = ReachPath(path);
    if (::unlinkat(reached.Base(), reached.rest.c_str(), AT_REMOVEDIR) == 0) return;
    const int code = errno;
    struct stat status;
    const bool isThere =
        ::fstatat(reached.Base(), reached.rest.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
    throw FolderError(code == ENOTDIR && isThere ? EEXIST : code, path);
  }

  int StartProcess(std::string_view program, const std::vector<std::string>& arguments,
                   StartWindow) override {
    return StartLinuxProcess(program, arguments);
  }

  bool ProcessLives(int process) override { return LinuxProcessLives(process); }

  void BringToFront(int process) override { BringX11WindowToFront(process); }

  std::unique_ptr<FolderWatch> WatchFolder(std::string_view folder) override {
    return WatchLinuxFolder(folder);
  }

  void OpenFolder(std::string_view folder) override { OpenFolderOnDesktop(folder); }
  void ShowFile(std::string_view file) override { ShowFileOnDesktop(file); }
  void OpenByVerb(std::string_view path, std::string_view workingFolder) override {
    OpenByVerbOnDesktop(path, workingFolder);
  }
  void OpenClassicHelp(std::string_view file, HelpCommand, std::string_view) override {
    OpenClassicHelpOnDesktop(file);
  }

  OpenedKey OpenRegistryKey(RegistryRoot root, std::string_view path,
                            RegistryAccess access) override {
    return OpenMimeKey(root, path, access);
  }
  OpenedKey MakeRegistryKey(RegistryRoot root, std::string_view path) override {
    return MakeMimeKey(root, path);
  }

  // This system keeps no program settings beside the settings store.
  void DeleteProgramSettings(std::string_view, std::string_view) override {}

  std::vector<SystemFinding> Findings() override { return LinuxFindings(startFolder_); }

  bool InputIsTerminal() override { return ::isatty(STDIN_FILENO) == 1; }

  double Now() override {
    const LocalTime now = ReadClock();
    return DayNumber(now.calendar) + SecondsOfDay(now) / 86400.0;
  }

  double SecondsSinceMidnight() override { return SecondsOfDay(ReadClock()); }

  std::string ShortDate(CalendarDate date) override {
    tm calendar{};
    calendar.tm_year = date.year - 1900;
    calendar.tm_mon = date.month - 1;
    calendar.tm_mday = date.day;
    ::timegm(&calendar);
    char text[128];
    return std::string(text, ::strftime_l(text, sizeof text, "%x", &calendar, TheUsersLocale()));
  }

  std::string DecimalSeparator() override { return ::nl_langinfo_l(RADIXCHAR, TheUsersLocale()); }

  std::string EncodeCodePage(std::string_view utf8) override { return EncodeWindows1252(utf8); }
  std::string DecodeCodePage(std::string_view bytes) override { return DecodeWindows1252(bytes); }

 private:
  const std::string startFolder_ = WorkingFolder().value_or("/");
};

}  // namespace

Platform& SystemPlatform() {
  static LinuxPlatform platform;
  return platform;
}

}  // namespace tarvo
