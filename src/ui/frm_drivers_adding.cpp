#include "actions/install_drivers.h"
#include "base/runtime_error.h"
#include "platform/names.h"
#include "ui/frm_drivers.h"

namespace tarvo {
namespace {

// The shell's folder of all drives, where the search for another disk begins.
constexpr const char* kMyComputer = "::{20D04FE0-3AEA-1069-A2D8-08002B30309D}";

}  // namespace

void frmDrivers::AddDrivers() {
  if (!Refreshing) StandardDrivers();
  if (!IsLoaded()) return;  // closed while the user was choosing
  InstallOrder order;
  order.firstPackage = DriverFileList[1];
  if (order.firstPackage == PackageList::kCancel) return;
  if (order.firstPackage.empty()) {
    order.index = 0;
    if (!ChooseFromDisk(order.firstPackage)) return;
    order.fromDialog = !order.firstPackage.empty();
  }
  InstallDrivers(globals_, *this, order);
}

bool frmDrivers::ChooseFromDisk(std::string& package) {
  dlgCommonDialog.DialogTitle = globals_.Translate("Add Driver");
  dlgCommonDialog.FileName = kPackagePattern;
  dlgCommonDialog.InitDir = kMyComputer;
  try {
    globals_.frontEnd.ShowOpen(dlgCommonDialog);
  } catch (const RuntimeError&) {
    return false;  // cancelled
  }
  package = dlgCommonDialog.FileName;
  return true;
}

std::string frmDrivers::StandardDrivers() {
  try {
    Platform& platform = globals_.platform;
    stdDrivers_.file_stddrvs.Path = platform.CurrentFolder();
    stdDrivers_.file_stddrvs.Refresh(platform);
    if (!stdDrivers_.file_stddrvs.Entries.empty()) globals_.frontEnd.ShowModal(stdDrivers_, *this);
  } catch (const RuntimeError&) {
    // Without packages that can be listed nothing is shown, and the package list stays as it is.
  }
  return {};
}

void frmDrivers::RefreshDrivers() {
  Refreshing = true;
  const int collected = CollectPackagesOfInstalledDrivers(globals_, *this);
  globals_.frontEnd.SetMousePointer(kHourglassPointer);
  if (collected > 0) {
    lvListView.Select(&lvListView.ItemAt(0));
    lvListView_DblClick();
  }
  Refreshing = false;
  globals_.frontEnd.SetMousePointer(kDefaultPointer);
}

}  // namespace tarvo
