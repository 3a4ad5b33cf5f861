// Stands for a driver's tool: adds its path and its arguments, one blank between the words, as a
// line to the file whose path stands behind "notes=" at the end of the program's own file, and
// ends. Without such an end it only ends.
#include <windows.h>
// After it: uses its types.
#include <shellapi.h>

#include <string>

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

std::string EndOfFile(const wchar_t* path) {
  const HANDLE file =
      ::CreateFileW(path, GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr);
  std::string end(1024, '\0');
  DWORD got = 0;
  ::SetFilePointer(file, -static_cast<LONG>(end.size()), nullptr, FILE_END);
  ::ReadFile(file, end.data(), static_cast<DWORD>(end.size()), &got, nullptr);
  ::CloseHandle(file);
  end.resize(got);
  return end;
}

std::wstring Wide(const std::string& text) {
  std::wstring wide(text.size(), L'\0');
  const int size = static_cast<int>(text.size());
  wide.resize(static_cast<std::size_t>(
      ::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), size)));
  return wide;
}

std::string Narrow(const std::wstring& text) {
  std::string narrow(text.size() * 3, '\0');
  narrow.resize(static_cast<std::size_t>(
      ::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), narrow.data(),
                            static_cast<int>(narrow.size()), nullptr, nullptr)));
  return narrow;
}

void Append(const std::wstring& path, const std::string& line) {
  const HANDLE file = ::CreateFileW(path.c_str(), FILE_APPEND_DATA, kShareAll, nullptr, OPEN_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  DWORD put = 0;
  ::WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &put, nullptr);
  ::CloseHandle(file);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
  wchar_t own[MAX_PATH * 4] = L"";
  ::GetModuleFileNameW(nullptr, own, MAX_PATH * 4);
  constexpr const char* kMark = "notes=";
  const std::string end = EndOfFile(own);
  const std::size_t at = end.rfind(kMark);
  if (at == std::string::npos) return 0;
  int count = 0;
  wchar_t** const words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  std::wstring line = words[0];
  // The shell's "$*" stands behind one blank, also when it is empty.
  line += L' ';
  for (int i = 1; i < count; ++i) line += (i > 1 ? L" " : L"") + std::wstring(words[i]);
  Append(Wide(end.substr(at + std::string(kMark).size())), Narrow(line) + "\n");
  return 0;
}
