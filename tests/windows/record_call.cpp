// Stands in for a program of the system: adds its command line, in UTF-8, as a line to the file
// "calls.txt" beside itself, and ends.
#include <windows.h>

#include <cstdio>
#include <memory>
#include <string>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  std::wstring path(32768, L'\0');
  path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  path.replace(path.rfind(L'\\') + 1, std::wstring::npos, L"calls.txt");
  const std::wstring line = ::GetCommandLineW();
  std::string text(line.size() * 3, '\0');
  text.resize(static_cast<std::size_t>(
      ::WideCharToMultiByte(CP_UTF8, 0, line.data(), static_cast<int>(line.size()), text.data(),
                            static_cast<int>(text.size()), nullptr, nullptr)));
  const std::unique_ptr<FILE, int (*)(FILE*)> file(::_wfopen(path.c_str(), L"ab"), &std::fclose);
  return file && std::fprintf(file.get(), "%s\n", text.c_str()) > 0 ? 0 : 1;
}
