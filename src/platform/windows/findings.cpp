#include "platform/windows/findings.h"

#include <string>

#include "platform/windows/code_page.h"
#include "platform/windows/file_status.h"
#include "platform/windows/system_folders.h"

namespace tarvo {
namespace {

SystemFinding FileManager() {
  constexpr const char* kTopic = "File manager";
  if (::GetFileAttributesW(DesktopProgram(L"explorer.exe").c_str()) != INVALID_FILE_ATTRIBUTES) {
    return {kTopic, true, "Explorer is there; it opens folders and shows files selected."};
  }
  return {kTopic, false, "Explorer is missing: folders cannot be opened; repair the system."};
}

SystemFinding ProgramsForWindows() {
  constexpr const char* kTopic = "Programs for Windows";
  if (Runs32BitPrograms()) return {kTopic, true, "32-bit and 64-bit programs run."};
  return {kTopic, false,
          "Only 64-bit programs run: 32-bit tools cannot be started; install the system's 32-bit "
          "part."};
}

SystemFinding CodePage() {
  constexpr const char* kTopic = "Code page";
  const CodePageFacts facts = UsedCodePage();
  const std::string name = "Windows-" + std::to_string(facts.number);
  if (facts.isTheSystems) {
    return {kTopic, true, "Settings are stored in the system's code page, " + name + "."};
  }
  return {kTopic, false,
          "The system's code page has characters of several bytes, so settings are stored in " +
              name + "; a tool that stores other characters than these reads differently here."};
}

}  // namespace

std::vector<SystemFinding> WindowsFindings() {
  return {FileManager(), ProgramsForWindows(), CodePage()};
}

}  // namespace tarvo
