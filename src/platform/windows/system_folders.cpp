#include "platform/windows/system_folders.h"

#include <windows.h>
// After it: uses its types.
#include <shlobj.h>

#include <memory>

#include "base/paths.h"
#include "platform/platform.h"
#include "platform/windows/code_page.h"
#include "platform/windows/file_status.h"
#include "platform/windows/system_path.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/windows_error.h"

namespace tarvo {
namespace {

std::string WithoutEndSeparator(std::string path) {
  while (path.size() > RootSize(path) && path.back() == kSeparator) path.pop_back();
  return path;
}

std::string EnvironmentValue(const wchar_t* name) {
  std::wstring value(::GetEnvironmentVariableW(name, nullptr, 0), L'\0');
  value.resize(::GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size())));
  return Narrow(value);
}

// Wine gives the path that a path of the system below has for Windows programs; Windows itself
// has no such function.
std::string WineNameOf(const std::string& path) {
  using DosFileName = wchar_t*(CDECL*)(const char*);
  const HMODULE kernel = ::GetModuleHandleW(L"kernel32.dll");
  const FARPROC found = kernel ? ::GetProcAddress(kernel, "wine_get_dos_file_name") : nullptr;
  if (!found) return path;
  const auto dosFileName = reinterpret_cast<DosFileName>(reinterpret_cast<void*>(found));
  struct FreeFromHeap {
    void operator()(wchar_t* text) const { ::HeapFree(::GetProcessHeap(), 0, text); }
  };
  const std::unique_ptr<wchar_t, FreeFromHeap> name(dosFileName(path.c_str()));
  return name ? PlainPath(name.get()) : path;
}

// A folder of the shell; nothing when the look-up fails.
std::optional<std::string> ShellFolder(int identifier) {
  char path[1024] = "";
  if (::SHGetFolderPathA(nullptr, identifier, nullptr, SHGFP_TYPE_CURRENT, path) != S_OK) {
    return std::nullopt;
  }
  const std::string text = FromAnsi(path);
  if (text.find('?') == std::string::npos) return WithoutEndSeparator(text);
  // The code page lacks one of the path's characters; no path has a question mark.
  wchar_t wide[MAX_PATH] = L"";
  if (::SHGetFolderPathW(nullptr, identifier, nullptr, SHGFP_TYPE_CURRENT, wide) != S_OK) {
    return std::nullopt;
  }
  return WithoutEndSeparator(Narrow(wide));
}

std::wstring InFolderOf(UINT (*folderOf)(wchar_t*, UINT), const std::wstring& name) {
  wchar_t folder[MAX_PATH] = L"";
  folderOf(folder, static_cast<UINT>(std::size(folder)));
  return std::wstring(folder) + L'\\' + name;
}

UINT SystemFolder(wchar_t* path, UINT size) { return ::GetSystemDirectoryW(path, size); }
UINT WindowsFolder(wchar_t* path, UINT size) { return ::GetSystemWindowsDirectoryW(path, size); }

}  // namespace

std::optional<std::string> CommonDocumentsFolder(const std::string& startFolder) {
  std::string chosen = EnvironmentValue(L"TARVO_COMMON_DOCUMENTS");
  if (chosen.empty()) return ShellFolder(kCommonDocuments);
  if (chosen.starts_with('/')) chosen = WineNameOf(chosen);
  const bool isAbsolute = RootSize(chosen) > 0 || chosen.find(':') != std::string::npos;
  return WithoutEndSeparator(
      PlainPath(SystemPath(isAbsolute ? chosen : JoinPath(startFolder, chosen))));
}

std::optional<std::string> UserDocumentsFolder() { return ShellFolder(kPersonalDocuments); }

std::string RunningProgramsFolder() {
  DWORD room = MAX_PATH;
  for (;;) {
    std::wstring path(room, L'\0');
    const DWORD size = ::GetModuleFileNameW(nullptr, path.data(), room);
    if (size == 0) throw ErrorFromCode(::GetLastError());
    path.resize(size);
    if (size < room) return std::string(FolderOf(PlainPath(path)));
    room *= 2;
  }
}

std::wstring SystemProgram(const std::wstring& name) { return InFolderOf(SystemFolder, name); }
std::wstring DesktopProgram(const std::wstring& name) { return InFolderOf(WindowsFolder, name); }

bool Runs32BitPrograms() {
  wchar_t folder[MAX_PATH] = L"";
  const UINT size = ::GetSystemWow64DirectoryW(folder, static_cast<UINT>(std::size(folder)));
  // Where only 64-bit programs run, the folder may be there without what they need.
  if (size == 0) return false;
  const std::wstring kernel = std::wstring(folder) + L"\\kernel32.dll";
  return ::GetFileAttributesW(kernel.c_str()) != INVALID_FILE_ATTRIBUTES;
}

}  // namespace tarvo
