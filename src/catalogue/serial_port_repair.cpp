#include "catalogue/serial_port_repair.h"

#include "base/paths.h"
#include "platform/names.h"

namespace tarvo {
namespace {

constexpr double kTimeToWork = 10;    // seconds
constexpr double kLongestTurn = 0.5;  // seconds

}  // namespace

void Check4MscommPatch(Globals& globals) {
  Platform& platform = globals.platform;
  const std::string program =
      ResolveName(platform, WithSeparator(platform.ProgramFolder()) + "MscommPatch.exe");
  if (!FileExists(platform, program)) return;
  platform.StartProcess(program, {}, StartWindow::kMinimised);
  globals.library.Pause(kTimeToWork, [&] { globals.frontEnd.YieldUntilEvent(kLongestTurn); });
  platform.RemoveFile(program);
}

}  // namespace tarvo
