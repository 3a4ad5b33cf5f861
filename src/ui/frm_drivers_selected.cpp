#include "actions/mobile_device.h"
#include "actions/remove_driver.h"
#include "actions/running_tools.h"
#include "catalogue/driver_list.h"
#include "ui/frm_drivers.h"

namespace tarvo {
namespace {

constexpr int kEnter = 13;
constexpr int kRightButton = 2;

}  // namespace

bool frmDrivers::SelectsDriver() const {
  const ListItem* item = lvListView.SelectedItem();
  return item && item->Key != kAddItemKey;
}

void frmDrivers::mnuFileOpen_Click() { lvListView_DblClick(); }

void frmDrivers::lvListView_DblClick() {
  const ListItem* item = lvListView.SelectedItem();
  if (!item) return;
  if (item->Key == kAddItemKey) {
    AddDrivers();
  } else {
    OpenDriver(globals_.platform, item->Text);
  }
}

void frmDrivers::lvListView_KeyPress(int& keyAscii) {
  if (keyAscii != kEnter) return;
  keyAscii = 0;
  lvListView_DblClick();
}

// The menu belongs to the selected item, wherever the pointer is.
void frmDrivers::lvListView_MouseUp(int button) {
  if (button == kRightButton && SelectsDriver()) {
    globals_.frontEnd.PopupMenu(mnuFile, &mnuFileOpen);
  }
}

void frmDrivers::mnuFileDownload_Click() {
  // A copy: the list may be rebuilt while the tool runs.
  const ListItem* item = lvListView.SelectedItem();
  if (item) RunDownload(globals_, *this, std::string(item->Text));
}

void frmDrivers::StartToolOfSelected(std::string_view tool) {
  const ListItem* item = lvListView.SelectedItem();
  if (item) StartTool(globals_.platform, item->Text, tool);
}

void frmDrivers::mnuFileUpload_Click() { StartToolOfSelected("Upload.EXE"); }

void frmDrivers::mnuFileProperties_Click() { StartToolOfSelected("Properties.EXE"); }

void frmDrivers::mnuFileInstallMobile_Click() {
  const ListItem* item = lvListView.SelectedItem();
  if (item) InstallMobileDriver(globals_.platform, dataPath, item->Text);
}

void frmDrivers::mnuFileMobileDevice_Click() { OpenMobileDevice(globals_.platform, dataPath); }

void frmDrivers::mnuFileDelete_Click() {
  if (SelectsDriver()) RemoveDriver(globals_, *this, std::string(lvListView.SelectedItem()->Text));
}

void frmDrivers::mnuFileRename_Click() {
  globals_.frontEnd.MsgBox("Rename Code goes here!", MessageButtons::kOk, MessageIcon::kNone,
                           globals_.translator.ApplicationTitle());
}

}  // namespace tarvo
