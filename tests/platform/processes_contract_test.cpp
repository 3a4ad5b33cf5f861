#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

#include "platform/contract.h"

namespace tarvo::test {
namespace {

std::string Script(const TemporaryFolder& folder, const std::string& name,
                   const std::string& text) {
  const std::string path = folder.WriteFile(name, "#!/bin/sh\n" + text + "\n");
  std::filesystem::permissions(path, std::filesystem::perms(0755));
  return path;
}

// What a started script has written, once it has written a line.
std::string WaitForLine(const std::string& path) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (std::chrono::steady_clock::now() < deadline) {
    if (std::filesystem::exists(path)) return ReadFileAt(path);
    std::this_thread::yield();
  }
  return "nothing within the deadline";
}

TEST_P(PlatformContract, StartedProcessesGetTheirArgumentsAndTheCurrentFolder) {
  const std::string tool =
      Script(folder, "My Tool.EXE", "echo \"$1|$2|$(pwd)\" > out.part; mv out.part out");
  EXPECT_GT(platform.StartProcess(tool, {"/v", "two words"}, StartWindow::kMinimised), 0);
  EXPECT_EQ(WaitForLine(folder / "out"), "/v|two words|" + folder.Path() + "\n");
}

TEST_P(PlatformContract, StartedProcessesAreInASessionOfTheirOwn) {
  const std::string tool =
      Script(folder, "tool", "echo \"$$ $(ps -o sid= -p $$)\" > out.part; mv out.part out");
  const int identifier = platform.StartProcess(tool, {}, StartWindow::kNormal);
  const std::string text = WaitForLine(folder / "out");
  EXPECT_EQ(std::stoi(text), identifier);
  EXPECT_EQ(std::stoi(text.substr(text.find(' '))), identifier);
}

TEST_P(PlatformContract, StartedProcessesHaveNoStandardFilesOfOurs) {
  const std::string tool = Script(folder, "tool",
                                  "files=$(readlink /proc/$$/fd/0 /proc/$$/fd/1 /proc/$$/fd/2)\n"
                                  "echo \"$files\" > out.part; mv out.part out");
  platform.StartProcess(tool, {}, StartWindow::kNormal);
  EXPECT_EQ(WaitForLine(folder / "out"), "/dev/null\n/dev/null\n/dev/null\n");
}

TEST_P(PlatformContract, StartedProcessesNeedAProgramThatIsThere) {
  EXPECT_EQ(ErrorOf([&] { platform.StartProcess(folder / "missing", {}, StartWindow::kNormal); }),
            kFileNotFound);
  EXPECT_EQ(ErrorOf([&] { platform.StartProcess(folder.Path(), {}, StartWindow::kNormal); }),
            kPathFileAccessError);
}

TEST_P(PlatformContract, StartedProcessesNeedAFileThatMayBeExecuted) {
  const std::string tool = folder.WriteFile("tool", "#!/bin/sh\n");
  EXPECT_EQ(ErrorOf([&] { platform.StartProcess(tool, {}, StartWindow::kNormal); }),
            kPermissionDenied);
}

TEST_P(PlatformContract, StartedProcessesNeedAFileThatIsAProgram) {
  const std::string tool = folder.WriteFile("tool", "plain text");
  std::filesystem::permissions(tool, std::filesystem::perms(0755));
  EXPECT_EQ(ErrorOf([&] { platform.StartProcess(tool, {}, StartWindow::kNormal); }),
            kInvalidProcedureCall);
}

// A program for Windows is run by "wine", whatever that is here: one of the test's own.
TEST_P(PlatformContract, StartedProcessesForWindowsGoThroughTheirInterpreter) {
  folder.MakeFolder("bin");
  Script(folder, "bin/wine",
         "echo \"wine $1 $2\" > '" + folder / "out.part" + "'; mv '" + folder / "out.part" + "' '" +
             folder / "out" + "'");
  const std::string tool = folder.WriteFile("Download.EXE", "MZ and more");
  const std::string path = std::getenv("PATH");
  ::setenv("PATH", (folder / "bin:" + path).c_str(), 1);
  platform.StartProcess(tool, {"/v"}, StartWindow::kNormal);
  EXPECT_EQ(WaitForLine(folder / "out"), "wine " + tool + " /v\n");
  ::setenv("PATH", (folder / "nothing").c_str(), 1);
  EXPECT_EQ(ErrorOf([&] { platform.StartProcess(tool, {}, StartWindow::kNormal); }), kFileNotFound);
  ::setenv("PATH", path.c_str(), 1);
}

}  // namespace
}  // namespace tarvo::test
