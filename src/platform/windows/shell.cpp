#include "platform/windows/shell.h"

#include <windows.h>
// After it: uses its types.
#include <shellapi.h>

#include <cstdint>
#include <optional>
#include <string>

#include "base/paths.h"
#include "platform/windows/code_page.h"
#include "platform/windows/file_status.h"
#include "platform/windows/processes.h"
#include "platform/windows/system_folders.h"
#include "platform/windows/system_path.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/windows_error.h"

namespace tarvo {
namespace {

// The path from the root on as people write it.
std::string Absolute(std::string_view path) { return PlainPath(SystemPath(path)); }

void NeedFolder(const std::string& path) {
  if (!IsFolderAt(SystemPath(path))) throw RuntimeError::About(kPathNotFound, path);
}

// Explorer takes the rest of its command line as it stands for the path, without quotation marks.
void StartExplorer(const std::string& arguments) {
  StartCommandLine(DesktopProgram(L"explorer.exe"), L"explorer " + Wide(arguments));
}

// The shell's verb. Gives what the call gives: more than 32 when it is done.
std::intptr_t Execute(const std::string& path, const std::string& folder) {
  const std::optional<std::string> ansiPath = ToAnsi(path);
  const std::optional<std::string> ansiFolder = ToAnsi(folder);
  if (ansiPath && ansiFolder) {
    return reinterpret_cast<std::intptr_t>(::ShellExecuteA(
        nullptr, "open", ansiPath->c_str(), nullptr, ansiFolder->c_str(), SW_SHOWNORMAL));
  }
  // A name with characters that the code page lacks.
  return reinterpret_cast<std::intptr_t>(::ShellExecuteW(
      nullptr, L"open", Wide(path).c_str(), nullptr, Wide(folder).c_str(), SW_SHOWNORMAL));
}

RuntimeError ExecuteError(std::intptr_t code, const std::string& path) {
  switch (code) {
    case SE_ERR_NOASSOC:
    case SE_ERR_ASSOCINCOMPLETE:
    case SE_ERR_DLLNOTFOUND:
      return RuntimeError::About(kFileNotFound, path);
    case SE_ERR_SHARE:
      return RuntimeError::About(kPermissionDenied, path);
    default:
      return ErrorFromCode(static_cast<DWORD>(code), path);
  }
}

}  // namespace

void OpenInExplorer(std::string_view folder) {
  const std::string path = Absolute(folder);
  NeedFolder(path);
  StartExplorer(path);
}

void ShowInExplorer(std::string_view file) {
  const std::string path = Absolute(file);
  NeedFolder(std::string(FolderOf(path)));
  StartExplorer("/SELECT," + path);
}

void OpenWithShell(std::string_view path, std::string_view workingFolder) {
  const std::string target = Absolute(path);
  if (!WindowsAttributes(target)) throw RuntimeError::About(kFileNotFound, target);
  const std::intptr_t code = Execute(target, Absolute(workingFolder));
  constexpr std::intptr_t kLastError = 32;
  if (code <= kLastError) throw ExecuteError(code, target);
}

void OpenWithHelpViewer(std::string_view file, HelpCommand command, std::string_view key) {
  const std::string path = Absolute(file);
  if (!WindowsAttributes(path)) throw RuntimeError::About(kFileNotFound, path);
  const std::optional<std::string> ansiPath = ToAnsi(path);
  if (!ansiPath) throw RuntimeError::About(kBadFileName, path);
  const std::string ansiKey = ToAnsi(key).value_or("");
  const bool searches = command == HelpCommand::kPartialKey;
  const auto data = searches ? reinterpret_cast<ULONG_PTR>(ansiKey.c_str()) : ULONG_PTR{0};
  if (!::WinHelpA(nullptr, ansiPath->c_str(), static_cast<UINT>(command), data)) {
    throw RuntimeError(kFileNotFound,
                       path +
                           " cannot be opened: there is no viewer for help files in the classic "
                           "format");
  }
}

}  // namespace tarvo
