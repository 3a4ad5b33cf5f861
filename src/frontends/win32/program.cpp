#include "frontends/win32/program.h"

#include <cstdio>
#include <memory>

#include "app/start/tarvo.h"
#include "frontends/win32/text.h"
#include "frontends/win32/win32_front_end.h"

namespace tarvo::win32 {
namespace {

constexpr const char* kPlainTitle = "Tarvo";

}  // namespace

void ShowFailure(const std::string& message, const std::string& title) {
  std::fprintf(stderr, "%s\n", message.c_str());
  MessageBoxW(nullptr, WideLines(message).c_str(), Wide(title).c_str(),
              MB_OK | MB_ICONERROR | MB_TASKMODAL | MB_SETFOREGROUND);
}

int RunProgram(Platform& platform, const std::string& arguments) {
  std::unique_ptr<Tarvo> tarvo;
  // Goes first: what it draws is the state of the windows.
  Win32FrontEnd frontEnd;
  AfterStart next = AfterStart::kEnd;
  frontEnd.RunGuarded([&] {
    tarvo = std::make_unique<Tarvo>(platform, frontEnd, arguments);
    next = tarvo->Start();
  });
  if (frontEnd.Failure().empty() && next == AfterStart::kEventLoop) frontEnd.RunEventLoop();
  if (frontEnd.Failure().empty()) return 0;
  ShowFailure(frontEnd.Failure(),
              tarvo ? tarvo->RunGlobals().translator.ApplicationTitle() : kPlainTitle);
  return 1;
}

}  // namespace tarvo::win32
