#include <windows.h>

#include "base/paths.h"
#include "platform/platform.h"
#include "platform/windows/code_page.h"
#include "platform/windows/current_folder.h"
#include "platform/windows/file_status.h"
#include "platform/windows/findings.h"
#include "platform/windows/folder_listing.h"
#include "platform/windows/held_folder.h"
#include "platform/windows/local_time.h"
#include "platform/windows/naming.h"
#include "platform/windows/processes.h"
#include "platform/windows/registry_keys.h"
#include "platform/windows/shell.h"
#include "platform/windows/system_folders.h"
#include "platform/windows/user_locale.h"
#include "platform/windows/window_activation.h"
#include "platform/windows/windows_file.h"
#include "platform/windows/windows_folder_watch.h"

namespace tarvo {
namespace {

class WindowsPlatform final : public Platform {
 public:
  std::optional<std::string> SpecialFolder(int identifier) override {
    if (identifier == kCommonDocuments) return CommonDocumentsFolder(startFolder_);
    if (identifier == kPersonalDocuments) return UserDocumentsFolder();
    return std::nullopt;
  }

  std::string ProgramFolder() override { return RunningProgramsFolder(); }
  std::string CurrentFolder() override { return WindowsCurrentFolder(); }
  void ChangeCurrentFolder(std::string_view path) override { ChangeWindowsCurrentFolder(path); }
  void ChangeCurrentDrive(char32_t letter) override { ChangeWindowsCurrentDrive(letter); }

  bool IsDriveRoot(std::string_view path) override {
    return !path.empty() && RootSize(path) == path.size();
  }

  void MakeFolder(std::string_view path) override { MakeWindowsFolder(path); }
  std::unique_ptr<HeldFolder> HoldFolder(std::string_view path) override {
    return HoldWindowsFolder(path);
  }
  std::vector<FolderEntry> Entries(std::string_view folder) override {
    return ListWindowsFolder(folder);
  }

  std::optional<unsigned> Attributes(std::string_view path) override {
    return WindowsAttributes(path);
  }
  bool IsLink(std::string_view path) override { return IsWindowsLink(path); }
  bool HasOtherNames(std::string_view path) override { return HasOtherWindowsNames(path); }
  void SetAttributes(std::string_view path, unsigned attributes) override {
    SetWindowsAttributes(path, attributes);
  }

  std::unique_ptr<File> OpenFile(std::string_view path, OpenFor use) override {
    return OpenWindowsFile(path, use);
  }
  std::unique_ptr<File> MakeFile(std::string_view path, FileUse) override {
    return MakeWindowsFile(path);
  }
  void RenameFile(std::string_view path, std::string_view newPath) override {
    RenameWindowsFile(path, newPath);
  }
  void RemoveFile(std::string_view path) override { RemoveWindowsFile(path); }
  void RemoveFolder(std::string_view path) override { RemoveWindowsFolder(path); }

  int StartProcess(std::string_view program, const std::vector<std::string>& arguments,
                   StartWindow window) override {
    return StartWindowsProcess(program, arguments, window);
  }
  bool ProcessLives(int process) override { return WindowsProcessLives(process); }
  void BringToFront(int process) override { BringWindowsWindowToFront(process); }

  std::unique_ptr<FolderWatch> WatchFolder(std::string_view folder) override {
    return WatchWindowsFolder(folder);
  }

  void OpenFolder(std::string_view folder) override { OpenInExplorer(folder); }
  void ShowFile(std::string_view file) override { ShowInExplorer(file); }
  void OpenByVerb(std::string_view path, std::string_view workingFolder) override {
    OpenWithShell(path, workingFolder);
  }
  void OpenClassicHelp(std::string_view file, HelpCommand command, std::string_view key) override {
    OpenWithHelpViewer(file, command, key);
  }

  OpenedKey OpenRegistryKey(RegistryRoot root, std::string_view path,
                            RegistryAccess access) override {
    return OpenWindowsKey(root, path, access);
  }
  OpenedKey MakeRegistryKey(RegistryRoot root, std::string_view path) override {
    return MakeWindowsKey(root, path);
  }
  void DeleteProgramSettings(std::string_view application, std::string_view section) override {
    DeleteWindowsProgramSettings(application, section);
  }

  std::vector<SystemFinding> Findings() override { return WindowsFindings(); }

  bool InputIsTerminal() override {
    DWORD mode = 0;
    return ::GetConsoleMode(::GetStdHandle(STD_INPUT_HANDLE), &mode) != 0;
  }

  double Now() override { return LocalDayAndTime(); }
  double SecondsSinceMidnight() override { return LocalSecondsSinceMidnight(); }

  std::string ShortDate(CalendarDate date) override { return UsersShortDate(date); }
  std::string DecimalSeparator() override { return UsersDecimalSeparator(); }

  std::string EncodeCodePage(std::string_view utf8) override { return EncodeSystemCodePage(utf8); }
  std::string DecodeCodePage(std::string_view bytes) override {
    return DecodeSystemCodePage(bytes);
  }

 private:
  const std::string startFolder_ = WindowsCurrentFolder();
};

}  // namespace

Platform& SystemPlatform() {
  static WindowsPlatform platform;
  return platform;
}

}  // namespace tarvo
