#include "platform/windows/current_folder.h"

#include "base/text.h"
#include "platform/windows/file_status.h"
#include "platform/windows/system_path.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/windows_error.h"

namespace tarvo {

std::string WindowsCurrentFolder() {
  DWORD room = MAX_PATH;
  for (;;) {
    std::wstring path(room, L'\0');
    const DWORD size = ::GetCurrentDirectoryW(room, path.data());
    if (size == 0) throw FolderErrorFromCode(::GetLastError(), ".");
    path.resize(size);
    if (size < room) return PlainPath(path);
    room = size;
  }
}

void ChangeWindowsCurrentFolder(std::string_view path) {
  // Without "\\?\": the system would keep that, and everything later that starts here with it.
  const std::wstring name = Wide(PlainPath(SystemPath(path)));
  if (name.empty()) throw RuntimeError(kPathNotFound);
  if (::SetCurrentDirectoryW(name.c_str())) return;
  const DWORD code = ::GetLastError();
  if (code == ERROR_FILE_NOT_FOUND || code == ERROR_INVALID_NAME) {
    throw RuntimeError::About(kPathNotFound, std::string(path));
  }
  throw ErrorFromCode(code, path);
}

void ChangeWindowsCurrentDrive(char32_t letter) {
  const char32_t upper = UpperCase(letter);
  if (upper < U'A' || upper > U'Z') throw RuntimeError(kInvalidProcedureCall);
  const std::wstring drive{static_cast<wchar_t>(upper), L':'};
  const bool isThere = ::GetDriveTypeW((drive + L'\\').c_str()) != DRIVE_NO_ROOT_DIR;
  // The system keeps a current folder for each drive, which becomes the process's.
  if (isThere && ::SetCurrentDirectoryW(drive.c_str())) return;
  throw RuntimeError::About(kDeviceUnavailable, Narrow(drive));
}

}  // namespace tarvo
