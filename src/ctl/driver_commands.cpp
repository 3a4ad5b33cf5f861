#include <chrono>
#include <thread>

#include "actions/remove_driver.h"
#include "app/start/version_report.h"
#include "base/paths.h"
#include "base/text.h"
#include "catalogue/driver_list.h"
#include "catalogue/drivers_folder.h"
#include "ctl/commands.h"
#include "ctl/json.h"
#include "ctl/listed_drivers.h"
#include "ctl/table.h"

namespace tarvo {
namespace {

constexpr std::chrono::seconds kLongestReport{60};
constexpr std::chrono::milliseconds kBetweenLooks{20};
constexpr std::size_t kFirstVersion = 3;  // subitem of the download tool's version

bool IsListed(const ListView& list, std::string_view name) {
  for (int i = 0; i < list.Count(); ++i) {
    const ListItem& item = list.ItemAt(i);
    if (item.Key != kAddItemKey && EqualIgnoringCase(item.Text, name)) return true;
  }
  return false;
}

bool IsThere(Platform& platform, const std::string& path) {
  return platform.IsLink(path) || platform.Attributes(path);
}

// Waits for the tools that record their versions; a tool that hangs is not waited for for ever.
bool WaitForAll(Platform& platform, const std::vector<int>& processes) {
  const auto deadline = std::chrono::steady_clock::now() + kLongestReport;
  for (const int process : processes) {
    while (platform.ProcessLives(process)) {
      if (std::chrono::steady_clock::now() >= deadline) return false;
      std::this_thread::sleep_for(kBetweenLooks);
    }
  }
  return true;
}

std::vector<std::vector<std::string>> VersionRows(const ListView& list) {
  std::vector<std::vector<std::string>> rows{{"name", "download", "upload", "properties"}};
  for (int i = 0; i < list.Count(); ++i) {
    const ListItem& item = list.ItemAt(i);
    if (item.Key == kAddItemKey) continue;
    rows.push_back({item.Text, item.SubItems[kFirstVersion], item.SubItems[kFirstVersion + 1],
                    item.SubItems[kFirstVersion + 2]});
  }
  return rows;
}

}  // namespace

void RemoveInstalledDriver(CommandRun& run) {
  Platform& platform = run.globals.platform;
  ListedDrivers window(run.globals);
  if (!IsListed(window.lvListView, run.arguments[0]))
    throw CommandFailure("There is no driver \"" + OneLine(run.arguments[0]) + "\".");
  if (!run.yes && !platform.InputIsTerminal()) {
    throw CommandFailure(
        "Removing a driver asks before it deletes, and there is no terminal to ask on; --yes "
        "answers every question.");
  }
  // Of two folders whose names differ in letter case only the list shows one; the exact name wins.
  const std::string folder = DriverFolderPath(platform, run.arguments[0]);
  const std::string name(FileNameOf(folder));
  if (!RemoveDriver(run.globals, window, name)) {
    throw CommandFailure("The driver \"" + OneLine(name) + "\" was not removed.");
  }
  if (IsThere(platform, folder)) {
    throw CommandFailure("Not everything could be removed; what remains is in " + OneLine(folder) +
                         ".");
  }
  if (run.json) {
    run.out << "{" << JsonString("removed") << ": " << JsonString(name) << "}\n";
  } else {
    run.out << "The driver \"" << OneLine(name) << "\" has been removed.\n";
  }
}

void RecordToolVersions(CommandRun& run) {
  Platform& platform = run.globals.platform;
  ListedDrivers window(run.globals);
  std::vector<int> processes;
  // Once listed, the current folder is the one that holds the listed drivers.
  std::string folderPath = platform.CurrentFolder();
  ReportToolVersions(platform, run.globals.frontEnd, folderPath,
                     [&](int process) { processes.push_back(process); });
  const bool allEnded = WaitForAll(platform, processes);
  UpdateDriverList(run.globals, window);
  window.lvListView.Sort();
  WriteRows(run, VersionRows(window.lvListView));
  if (!allEnded) {
    throw CommandFailure(
        "Some tools were still running after a minute; their versions may follow.");
  }
}

}  // namespace tarvo
