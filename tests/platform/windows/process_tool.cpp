// A program that tests start: does what its first argument says.
//   note FILE WORD...   writes the current folder and each word as a line into the file, at once
//   wait FILE           runs until the file is there, a minute at most
//   leave FILE          starts itself with "wait FILE" and ends
#include <windows.h>
// After it: uses its types.
#include <shellapi.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "platform/platform.h"
#include "platform/windows/wide_text.h"

namespace fs = std::filesystem;

namespace {

void Note(const fs::path& file, const std::vector<std::wstring>& words) {
  const fs::path part = fs::path(file).concat(".part");
  {
    std::ofstream out(part, std::ios::binary);
    out << fs::current_path().string() << '\n';
    for (const std::wstring& word : words) out << tarvo::Narrow(word) << '\n';
  }
  fs::rename(part, file);
}

void WaitFor(const fs::path& file) {
  for (int i = 0; i < 6000 && !fs::exists(file); ++i) ::Sleep(10);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
  int count = 0;
  wchar_t** const given = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  const std::vector<std::wstring> words(given, given + count);
  if (words.size() < 3) return 2;
  if (words[1] == L"note") Note(words[2], {words.begin() + 3, words.end()});
  if (words[1] == L"wait") WaitFor(words[2]);
  if (words[1] == L"leave") {
    tarvo::SystemPlatform().StartProcess(tarvo::Narrow(words[0]), {"wait", tarvo::Narrow(words[2])},
                                         tarvo::StartWindow::kNormal);
  }
  return 0;
}
