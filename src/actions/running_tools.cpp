#include "actions/running_tools.h"

#include <algorithm>
#include <optional>

#include "base/absorb.h"
#include "base/paths.h"
#include "catalogue/driver_list.h"
#include "catalogue/drivers_folder.h"
#include "platform/names.h"

namespace tarvo {
namespace {

constexpr float kTurn = 2;  // seconds

// Where a driver's tools put data.
std::string DataFolderOf(Platform& platform, const std::string& folder) {
  std::string data = ResolveName(platform, JoinPath(folder, "Data"));
  return FolderExists(platform, data) ? data : folder;
}

// Lets the windows live until the clock is two seconds on. The clock begins anew at midnight, and
// nothing corrects for that: a turn begun less than two seconds before midnight lasts until the
// window is closed. False when it has been closed.
bool WaitOneTurn(Globals& globals, const MainWindow& window) {
  const auto clock = [&] { return static_cast<float>(globals.platform.SecondsSinceMidnight()); };
  const float end = clock() + kTurn;
  for (float now = end - kTurn; now < end; now = clock()) {
    globals.frontEnd.YieldUntilEvent(std::min(end - now, kTurn));
    if (!globals.frontEnd.IsLoaded(window)) return false;
  }
  return true;
}

// False when the window has been closed meanwhile.
bool WaitForEnd(Globals& globals, const MainWindow& window, int process) {
  while (WaitOneTurn(globals, window)) {
    if (!globals.platform.ProcessLives(process)) return true;
    globals.platform.BringToFront(process);
  }
  return false;
}

std::optional<int> StartDownload(Platform& platform, MainWindow& window,
                                 const std::string& driver) {
  std::optional<int> process;
  Absorb([&] {
    const std::string folder = DriverFolderPath(platform, driver);
    Absorb([&] { FileMonitor(platform, window.TARVO1, DataFolderOf(platform, folder)); });
    const std::string tool = ResolveName(platform, JoinPath(folder, "Download.EXE"));
    process = platform.StartProcess(tool, {}, StartWindow::kNormal);
  });
  return process;
}

}  // namespace

void RunDownload(Globals& globals, MainWindow& window, const std::string& driver) {
  if (const auto process = StartDownload(globals.platform, window, driver)) {
    if (!WaitForEnd(globals, window, *process)) return;
    FileMonitor(globals.platform, window.TARVO1);
  }
  TryUpdateDriverList(globals, window, kCurrentDriver);
}

void StartTool(Platform& platform, const std::string& driver, std::string_view tool) {
  const std::string folder = DriverFolderPath(platform, driver);
  platform.StartProcess(ResolveName(platform, JoinPath(folder, tool)), {}, StartWindow::kNormal);
}

void OpenDriver(Platform& platform, const std::string& driver) {
  platform.OpenFolder(DataFolderOf(platform, DriverFolderPath(platform, driver)));
}

}  // namespace tarvo
