#include "platform/windows/command_line.h"

#include "base/runtime_error.h"

namespace tarvo {
namespace {

// Backslashes count twice before a quotation mark, the closing one included, and once elsewhere.
void AppendWord(std::wstring& line, std::wstring_view word) {
  if (!word.empty() && word.find_first_of(L" \t\n\v\"") == std::wstring_view::npos) {
    line += word;
    return;
  }
  line += L'"';
  std::size_t backslashes = 0;
  for (const wchar_t c : word) {
    if (c == L'\\') {
      ++backslashes;
    } else {
      line.append(c == L'"' ? 2 * backslashes + 1 : backslashes, L'\\');
      line += c;
      backslashes = 0;
    }
  }
  line.append(2 * backslashes, L'\\');
  line += L'"';
}

// Between quotation marks only "%" means something to the interpreter: the name of a variable
// stands between two of them. The name put behind each here is one that gives nothing.
void AppendScriptWord(std::wstring& line, std::wstring_view word) {
  if (word.find_first_of(std::wstring_view(L"\"\r\n\0", 4)) != std::wstring_view::npos) {
    throw RuntimeError(kInvalidProcedureCall);
  }
  line += L'"';
  for (const wchar_t c : word) {
    if (c == L'%') {
      line += L"%%cd:~,%";
    } else {
      line += c;
    }
  }
  line += L'"';
}

bool IsPlain(std::wstring_view word) {
  constexpr std::wstring_view kPlain =
      L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-./:\\";
  return !word.empty() && word.find_first_not_of(kPlain) == std::wstring_view::npos;
}

}  // namespace

std::wstring CommandLineOf(std::wstring_view program, const std::vector<std::wstring>& arguments) {
  // The program's own name cannot hold a quotation mark, and backslashes before one mean nothing in
  // it.
  std::wstring line = L"\"" + std::wstring(program) + L"\"";
  for (const std::wstring& argument : arguments) {
    line += L' ';
    AppendWord(line, argument);
  }
  return line;
}

std::wstring ScriptCommandLineOf(std::wstring_view interpreter, std::wstring_view script,
                                 const std::vector<std::wstring>& arguments) {
  // "/d": nothing else is run before; "/s": the outermost quotation marks, and only these, are
  // taken away.
  std::wstring line = L"\"" + std::wstring(interpreter) + L"\" /d /s /c \"";
  AppendScriptWord(line, script);
  for (const std::wstring& argument : arguments) {
    line += L' ';
    // A script sees the quotation marks of its arguments, so "/v" goes without.
    if (IsPlain(argument)) {
      line += argument;
    } else {
      AppendScriptWord(line, argument);
    }
  }
  return line + L'"';
}

}  // namespace tarvo
