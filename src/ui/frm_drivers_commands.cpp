#include "actions/help.h"
#include "catalogue/command_state.h"
#include "catalogue/driver_list.h"
#include "platform/names.h"
#include "ui/commands.h"
#include "ui/frm_drivers.h"

namespace tarvo {
namespace {

void Toggle(MenuItem& entry, Control& bar) {
  entry.Checked = !entry.Checked;
  bar.Visible = entry.Checked;
}

}  // namespace

void frmDrivers::mnuFileClose_Click() { globals_.frontEnd.Unload(*this); }

void frmDrivers::mnuViewToolbar_Click() {
  Toggle(mnuViewToolbar, tbToolBar);
  SizeControls();
}

void frmDrivers::mnuViewStatusBar_Click() {
  Toggle(mnuViewStatusBar, sbStatusBar);
  SizeControls();
}

void frmDrivers::mnuListViewMode_Click(int index) {
  mnuListViewMode[static_cast<std::size_t>(lvListView.View())].Checked = false;
  lvListView.SetView(index);
  mnuListViewMode[static_cast<std::size_t>(index)].Checked = true;
  tbToolBar.Press(index + kFirstViewButton);
}

void frmDrivers::mnuViewLineUpIcons_Click() { lvListView.Arrange = Arrangement::kAutoTop; }

void frmDrivers::mnuViewRefresh_Click() { UpdateDriverList(globals_, *this); }

void frmDrivers::mnuViewOptions_Click() {
  globals_.frontEnd.MsgBox("Options Dialog Code goes here!", MessageButtons::kOk,
                           MessageIcon::kNone, globals_.translator.ApplicationTitle());
}

void frmDrivers::mnuHelpContents_Click() {
  const std::string helpFile =
      ResolveName(globals_.platform, globals_.TarvoProgramPath + kHelpFileName);
  if (ShowHelpWithViewer(globals_, helpFile)) return;
  ShowRegisteredHelp(globals_, *this, HelpCommand::kContents);
}

// Unlike the contents, the search does not ask which way help opens.
void frmDrivers::mnuHelpSearch_Click() {
  ShowRegisteredHelp(globals_, *this, HelpCommand::kPartialKey);
}

void frmDrivers::mnuHelpAbout_Click() { globals_.frontEnd.ShowModal(about_, *this); }

void frmDrivers::lvListView_ItemClick(ListItem& item) {
  AllowCommandsOf(globals_.platform, *this, item);
}

void frmDrivers::tbToolBar_ButtonClick(const ToolbarButton& button) {
  for (const ToolbarCommand& command : kToolbarCommands) {
    if (button.Key != command.key) continue;
    if (!command.condition || (this->*command.condition).Enabled) (this->*command.handler)();
    return;
  }
  for (int mode = 0; mode < kViewModes; ++mode) {
    if (button.Key == kViewButtonKeys[mode]) mnuListViewMode_Click(mode);
  }
}

void frmDrivers::tmrStuff_Timer() {
  sbStatusBar.Panels[1].Style = PanelStyle::kDate;
  sbStatusBar.Panels[2].Style = PanelStyle::kTime;
}

}  // namespace tarvo
