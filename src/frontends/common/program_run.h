#pragma once

#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/start/tarvo.h"
#include "platform/platform.h"

namespace tarvo {

// The program's title where none can be translated.
inline constexpr const char* kPlainTitle = "Tarvo";

// The words of the command line (see ProgramArguments) joined by one blank each.
std::string JoinArguments(const std::vector<std::string>& arguments);

// One run from start to end that needs no window, no display and no toolkit: the report of the
// tools' versions. Gives the message of the error that ended it, "" without one; nothing, having
// done nothing, for arguments that ask for windows.
std::optional<std::string> RunWithoutWindows(Platform& platform, const std::string& arguments);

// One run of the program from start to end with the windows of a front end; gives the exit code. An
// error that nothing handles is written to the standard error and given to `showFailure`, with the
// program's title: then it is 1.
template <class ScreenFrontEnd>
int RunWithWindows(
    Platform& platform, const std::string& arguments,
    const std::function<void(const std::string& message, const std::string& title)>& showFailure) {
  std::unique_ptr<Tarvo> tarvo;
  // Goes first: what it draws is the state of the windows.
  ScreenFrontEnd frontEnd;
  AfterStart next = AfterStart::kEnd;
  frontEnd.RunGuarded([&] {
    tarvo = std::make_unique<Tarvo>(platform, frontEnd, arguments);
    next = tarvo->Start();
  });
  if (frontEnd.Failure().empty() && next == AfterStart::kEventLoop) frontEnd.RunEventLoop();
  if (frontEnd.Failure().empty()) return 0;
  std::fprintf(stderr, "%s\n", frontEnd.Failure().c_str());
  showFailure(frontEnd.Failure(),
              tarvo ? tarvo->RunGlobals().translator.ApplicationTitle() : kPlainTitle);
  return 1;
}

}  // namespace tarvo
