#include <windows.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/contract.h"
#include "platform/windows/waiting.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

// What a started tool has noted: lines, the last one ended too.
std::string Noted(const std::string& path) {
  std::string text;
  EXPECT_TRUE(ComesTrue([&] {
    try {
      text = ReadFileAt(path);
    } catch (const std::runtime_error&) {
      return false;  // it is not there yet, or just being given its name
    }
    return text.ends_with('\n');
  }));
  return text;
}

TEST_P(PlatformContract, StartedProgramsGetEveryArgumentAsItStandsAndTheCurrentFolder) {
  const std::vector<std::string> words = {"/v",        "two words",  "",       "a\"b", "end\\",
                                          "\\\\x y\\", "Größe Ł 漢", "100% &", "^|<>"};
  const std::string tool = folder.Path() + "\\My Tool.EXE";
  fs::copy_file(PROCESS_TOOL, tool);
  std::vector<std::string> arguments = {"note", folder / "out"};
  arguments.insert(arguments.end(), words.begin(), words.end());
  EXPECT_GT(platform.StartProcess(tool, arguments, StartWindow::kMinimised), 0);
  std::string expected = folder.Path() + "\n";
  for (const std::string& word : words) expected += word + "\n";
  EXPECT_EQ(Noted(folder / "out"), expected);
}

TEST_P(PlatformContract, StartedScriptsGetTheirArguments) {
  for (const char* name : {"my tool.cmd", "tool.BAT"}) {
    const std::string script =
        folder.WriteFile(name, "@echo off\r\n>out.part echo %1;%2;%CD%\r\nren out.part out\r\n");
    EXPECT_GT(platform.StartProcess(script, {"/v", "a & b"}, StartWindow::kMinimised), 0);
    EXPECT_EQ(Noted(folder / "out"), "/v;\"a & b\";" + folder.Path() + "\r\n");
    platform.RemoveFile("out");
  }
}

TEST_P(PlatformContract, AProcessLivesUntilItEndsByItself) {
  const int process =
      platform.StartProcess(PROCESS_TOOL, {"wait", folder / "end"}, StartWindow::kNormal);
  EXPECT_TRUE(platform.ProcessLives(process));
  folder.WriteFile("end");
  EXPECT_TRUE(ComesTrue([&] { return !platform.ProcessLives(process); }));
  EXPECT_FALSE(platform.ProcessLives(process)) << "asked again";
}

TEST_P(PlatformContract, AProcessLivesUntilItIsKilled) {
  const int process =
      platform.StartProcess(PROCESS_TOOL, {"wait", folder / "end"}, StartWindow::kNormal);
  const HANDLE handle = ::OpenProcess(PROCESS_TERMINATE, FALSE, static_cast<DWORD>(process));
  ASSERT_TRUE(::TerminateProcess(handle, STILL_ACTIVE)) << "the exit code that looks alive";
  ::CloseHandle(handle);
  EXPECT_TRUE(ComesTrue([&] { return !platform.ProcessLives(process); }));
}

TEST_P(PlatformContract, AProcessDoesNotLiveOnInAProgramThatItStarted) {
  const int process =
      platform.StartProcess(PROCESS_TOOL, {"leave", folder / "end"}, StartWindow::kNormal);
  EXPECT_TRUE(ComesTrue([&] { return !platform.ProcessLives(process); }));
  folder.WriteFile("end");
}

TEST_P(PlatformContract, ProcessesThatThePlatformDidNotStartDoNotLiveForIt) {
  EXPECT_FALSE(platform.ProcessLives(static_cast<int>(::GetCurrentProcessId())));
  EXPECT_FALSE(platform.ProcessLives(0));
  EXPECT_FALSE(platform.ProcessLives(-1));
}

TEST_P(PlatformContract, StartedProcessesNeedAProgramThatIsThere) {
  const auto start = [&](const std::string& path) {
    return ErrorOf([&] { platform.StartProcess(path, {}, StartWindow::kNormal); });
  };
  EXPECT_EQ(start(folder / "missing.exe"), 53);
  EXPECT_EQ(start(folder / "missing.cmd"), 53);
  EXPECT_EQ(start(folder / "nowhere/Download.EXE"), 53);
  EXPECT_EQ(start(folder.Path()), 70) << "a folder may not be executed";
  EXPECT_EQ(start(folder.WriteFile("text.exe", "no program")), 5);
}

}  // namespace
}  // namespace tarvo::test
