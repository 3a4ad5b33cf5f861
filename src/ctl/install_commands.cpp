#include "actions/install_drivers.h"
#include "base/paths.h"
#include "ctl/commands.h"
#include "ctl/listed_drivers.h"
#include "ctl/table.h"

namespace tarvo {
namespace {

// Runs the install loop over the packages in the list, unattended as a refresh does: nobody is
// there for a properties tool.
void InstallListed(CommandRun& run, MainWindow& window) {
  InstallOrder order;
  order.firstPackage = window.DriverFileList[1];
  window.Refreshing = true;
  const std::optional<RefusedPackage> refused = InstallDrivers(run.globals, window, order);
  if (!refused) return;
  throw CommandFailure(run.globals.Translate("Invalid Driver file") + ": " +
                       OneLine(refused->path) + ": " + OneLine(refused->reason));
}

}  // namespace

void InstallPackages(CommandRun& run) {
  const std::string startFolder = run.globals.platform.CurrentFolder();
  ListedDrivers window(run.globals);
  int index = 1;
  for (const std::string& file : run.arguments) {
    const bool isAbsolute = file.starts_with(kSeparator);
    window.DriverFileList[index++] = isAbsolute ? file : JoinPath(startFolder, file);
  }
  InstallListed(run, window);
}

void RefreshInstalledDrivers(CommandRun& run) {
  ListedDrivers window(run.globals);
  if (CollectPackagesOfInstalledDrivers(run.globals, window) > 0) InstallListed(run, window);
}

}  // namespace tarvo
