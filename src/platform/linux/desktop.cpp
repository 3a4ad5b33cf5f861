#include "platform/linux/desktop.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <string>

#include "base/paths.h"
#include "base/runtime_error.h"
#include "platform/linux/desktop_entry.h"
#include "platform/linux/errno_error.h"
#include "platform/linux/file_manager.h"
#include "platform/linux/file_uri.h"
#include "platform/linux/linux_file.h"
#include "platform/linux/long_path.h"
#include "platform/linux/mime_apps.h"
#include "platform/linux/processes.h"
#include "platform/linux/wine.h"
#include "platform/linux/xdg_folders.h"

namespace tarvo {
namespace {

constexpr const char* kOpener = "xdg-open";
constexpr std::string_view kClassicHelpType = "application/winhlp";

std::string Absolute(std::string_view path) {
  if (path.starts_with('/')) return std::string(path);
  const std::unique_ptr<char, decltype(&std::free)> current(::getcwd(nullptr, 0), &std::free);
  if (!current) throw FolderError(errno, "the current folder");
  return JoinPath(current.get(), path);
}

bool IsFolder(const std::string& path) {
  const ReachedPath reached = ReachPath(path);
  struct stat status;
  if (::fstatat(reached.Base(), reached.rest.c_str(), &status, 0) != 0) {
    throw FileError(errno, reached, path);
  }
  return S_ISDIR(status.st_mode);
}

// What is missing here is a path, whatever stands in its place.
void NeedFolder(const std::string& path) {
  bool isThere = false;
  try {
    isThere = IsFolder(path);
  } catch (const RuntimeError& error) {
    if (error.Number() != kFileNotFound) throw;
  }
  if (!isThere) throw FolderError(ENOENT, path);
}

// Opens something with the program that the user's desktop has for it; `failure` tells what is
// missing when there is nothing that knows.
void OpenWithDesktop(const std::string& path, const std::string& failure) {
  const std::string opener = FindProgram(kOpener);
  if (opener.empty()) throw RuntimeError(kFileNotFound, failure);
  StartLinuxProcess(opener, {path});
}

void OpenFolderWithDesktop(const std::string& folder) {
  OpenWithDesktop(folder,
                  "No file manager answers on the session bus, and xdg-open is not "
                  "installed: " +
                      folder + " cannot be opened");
}

// Programs are told by their first bytes: on drives of other systems every file may be executed.
// One that may not even be read is one if it may be executed.
bool IsProgram(const std::string& path) {
  try {
    const std::string start = OpenLinuxFile(path, OpenFor::kReading)->ReadAt(0, 4);
    return start ==
               "\x7f"
               "ELF" ||
           start.starts_with("#!") || start.starts_with("MZ");
  } catch (const RuntimeError& error) {
    if (error.Number() == kPermissionDenied && ::access(path.c_str(), X_OK) == 0) return true;
    throw;
  }
}

}  // namespace

void OpenFolderOnDesktop(std::string_view folder) {
  const std::string path = Absolute(folder);
  NeedFolder(path);
  if (!OpenInFileManager(FileUri(path))) OpenFolderWithDesktop(path);
}

void ShowFileOnDesktop(std::string_view file) {
  const std::string path = Absolute(file);
  const std::string folder(FolderOf(path));
  NeedFolder(folder);
  if (!ShowInFileManager(FileUri(path))) OpenFolderWithDesktop(folder);
}

void OpenByVerbOnDesktop(std::string_view path, std::string_view workingFolder) {
  const std::string target = Absolute(path);
  if (!IsFolder(target) && IsProgram(target)) {
    StartLinuxProcess(target, {}, Absolute(workingFolder));
  } else {
    OpenWithDesktop(target, "xdg-open is not installed: " + target + " cannot be opened");
  }
}

// Wine has a viewer of its own, which its association of such files finds.
void OpenClassicHelpOnDesktop(std::string_view file) {
  const std::string path = Absolute(file);
  if (IsFolder(path)) throw ErrorFromErrno(EISDIR, path);
  const std::string failure = path +
                              " cannot be opened: there is no viewer for help files in the "
                              "classic format, and wine, which has one, is not installed";
  if (!DefaultApplication(kClassicHelpType).empty()) {
    OpenWithDesktop(path, failure);
  } else if (const WineSupport wine = FindWine(); wine.isInstalled) {
    StartLinuxProcess(wine.command, {"start", "/unix", path});
  } else {
    throw RuntimeError(kFileNotFound, failure);
  }
}

}  // namespace tarvo
