#include "platform/program_start.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>
// After it: uses its types.
#include <shellapi.h>

#include <cstdio>
#include <memory>

#include "platform/windows/wide_text.h"

namespace tarvo {
namespace {

void PassBytesOn(FILE* stream) {
  ::_setmode(::_fileno(stream), _O_BINARY);
  // A console shows the bytes of one character only when they come together.
  constexpr std::size_t kRoom = 65536;
  std::setvbuf(stream, nullptr, _IOFBF, kRoom);
}

}  // namespace

// The words that `main` is given have lost the characters that the system's code page lacks.
std::vector<std::string> ProgramArguments(int, const char* const*) {
  struct FreeLocal {
    void operator()(wchar_t** words) const { ::LocalFree(words); }
  };
  int count = 0;
  const std::unique_ptr<wchar_t*, FreeLocal> words(
      ::CommandLineToArgvW(::GetCommandLineW(), &count));
  std::vector<std::string> arguments;
  if (words) arguments.reserve(static_cast<std::size_t>(count));
  for (int i = 1; words && i < count; ++i) arguments.push_back(Narrow(words.get()[i]));
  return arguments;
}

Utf8Output::Utf8Output() : before_(::GetConsoleOutputCP()) {
  PassBytesOn(stdout);
  PassBytesOn(stderr);
  if (before_ != 0) ::SetConsoleOutputCP(CP_UTF8);
}

// The console belongs to the command interpreter, too.
Utf8Output::~Utf8Output() {
  std::fflush(stdout);
  std::fflush(stderr);
  if (before_ != 0) ::SetConsoleOutputCP(before_);
}

}  // namespace tarvo
