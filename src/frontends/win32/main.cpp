#include <clocale>
#include <memory>
#include <string>
#include <vector>

#include "frontends/common/program_run.h"
#include "frontends/win32/program.h"
#include "frontends/win32/system.h"
#include "frontends/win32/text.h"

namespace {

std::string Arguments() {
  int count = 0;
  const std::unique_ptr<LPWSTR, decltype(&LocalFree)> words(
      CommandLineToArgvW(GetCommandLineW(), &count), &LocalFree);
  std::vector<std::string> texts;
  std::vector<const char*> pointers;
  for (int i = 0; i < count; ++i) texts.push_back(tarvo::win32::Narrow(words.get()[i]));
  for (const std::string& text : texts) pointers.push_back(text.c_str());
  return tarvo::JoinArguments(count, pointers.data());
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  std::setlocale(LC_ALL, "");
  const std::string arguments = Arguments();
  const auto failure = tarvo::RunWithoutWindows(tarvo::SystemPlatform(), arguments);
  if (!failure) return tarvo::win32::RunProgram(tarvo::SystemPlatform(), arguments);
  if (failure->empty()) return 0;
  tarvo::win32::ShowFailure(*failure, "Tarvo");
  return 1;
}
