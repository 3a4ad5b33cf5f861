#include <cstdio>
#include <string>

#include "frontends/common/program_run.h"
#include "frontends/win32/program.h"
#include "frontends/win32/system.h"
#include "platform/program_start.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  const std::string arguments = tarvo::JoinArguments(tarvo::ProgramArguments(__argc, __argv));
  const auto failure = tarvo::RunWithoutWindows(tarvo::SystemPlatform(), arguments);
  if (!failure) return tarvo::win32::RunProgram(tarvo::SystemPlatform(), arguments);
  if (failure->empty()) return 0;
  std::fprintf(stderr, "%s\n", failure->c_str());
  tarvo::win32::ShowFailure(*failure, tarvo::kPlainTitle);
  return 1;
}
