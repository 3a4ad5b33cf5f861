#include "platform/windows/command_line.h"

#include <gtest/gtest.h>
#include <windows.h>
// After it: uses its types.
#include <shellapi.h>

#include "base/runtime_error.h"

namespace tarvo {
namespace {

std::vector<std::wstring> TakenApart(const std::wstring& line) {
  int count = 0;
  wchar_t** const words = ::CommandLineToArgvW(line.c_str(), &count);
  std::vector<std::wstring> result(words, words + count);
  ::LocalFree(words);
  return result;
}

TEST(CommandLine, IsTakenApartIntoTheWordsThatItWasMadeOf) {
  const std::wstring program = L"C:\\My Drivers\\Download.EXE";
  const std::vector<std::wstring> rows[] = {
      {},
      {L"/v"},
      {L""},
      {L"", L""},
      {L"two words", L"x"},
      {L"a\"b", L"\"", L"\"\""},
      {L"end\\", L"end\\\\", L"blank end\\", L"blank end\\\\"},
      {L"a\\\"b", L"a\\\\\"b c"},
      {L"\\\\server\\share", L"C:\\", L"tab\there"},
  };
  for (const std::vector<std::wstring>& words : rows) {
    std::vector<std::wstring> expected = {program};
    expected.insert(expected.end(), words.begin(), words.end());
    EXPECT_EQ(TakenApart(CommandLineOf(program, words)), expected);
  }
}

TEST(CommandLine, LeavesAPlainWordWithoutQuotationMarks) {
  EXPECT_EQ(CommandLineOf(L"a.exe", {L"/v"}), L"\"a.exe\" /v");
}

TEST(ScriptCommandLine, PutsTheWholeCallBetweenTheMarksThatTheInterpreterTakesAway) {
  EXPECT_EQ(ScriptCommandLineOf(L"C:\\cmd.exe", L"D:\\my tool.cmd", {L"/v", L"a & b"}),
            L"\"C:\\cmd.exe\" /d /s /c \"\"D:\\my tool.cmd\" /v \"a & b\"\"");
}

TEST(ScriptCommandLine, LetsNoNameOfAVariableStand) {
  EXPECT_EQ(ScriptCommandLineOf(L"cmd", L"50%PATH%.cmd", {}),
            L"\"cmd\" /d /s /c \"\"50%%cd:~,%PATH%%cd:~,%.cmd\"\"");
}

TEST(ScriptCommandLine, RefusesWordsThatCouldEndTheirMarks) {
  for (const std::wstring& word : {std::wstring(L"a\" & del *"), std::wstring(L"a\nb"),
                                   std::wstring(L"a\rb"), std::wstring(L"a\0b", 3)}) {
    try {
      ScriptCommandLineOf(L"cmd", L"a.cmd", {word});
      ADD_FAILURE() << "it is taken";
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.Number(), 5);
    }
  }
}

}  // namespace
}  // namespace tarvo
