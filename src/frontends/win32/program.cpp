#include "frontends/win32/program.h"

#include "frontends/common/program_run.h"
#include "frontends/win32/text.h"
#include "frontends/win32/win32_front_end.h"

namespace tarvo::win32 {

void ShowFailure(const std::string& message, const std::string& title) {
  MessageBoxW(nullptr, WideLines(message).c_str(), Wide(title).c_str(),
              MB_OK | MB_ICONERROR | MB_TASKMODAL | MB_SETFOREGROUND);
}

int RunProgram(Platform& platform, const std::string& arguments) {
  return RunWithWindows<Win32FrontEnd>(platform, arguments, ShowFailure);
}

}  // namespace tarvo::win32
