#pragma once

#include <string>

#include "app/globals/globals.h"
#include "catalogue/main_window.h"
#include "ui/frm_about.h"
#include "ui/frm_std_drivers.h"

namespace tarvo {

// The main window: its handlers. Their names are control + "_" + event.
class frmDrivers : public MainWindow {
 public:
  // `splash` is on the screen while this window loads.
  frmDrivers(Globals& globals, Form& splash);

  // Translates the window, enters the data folder, restores position and size, builds the list and
  // shows the window (not in a silent refresh). Without a handler of its own: a failure ends the
  // program.
  void Form_Load() override;

  // Unloads every other window and saves position, size and view.
  void Form_Unload() override;
  void Form_Activate() override;
  void Form_KeyDown(int& keyCode) override;
  void Form_Resize() override;

  // Lays the controls out in the window's inner area.
  void SizeControls();

  // Installs the packages in the base directory whose drivers are installed already, without
  // asking. Meanwhile an activation closes the window. Error 5 for a package file without "_" in
  // its name.
  void RefreshDrivers();

  // Shows the Add Driver window when the current folder holds packages; otherwise the package list
  // stays as the last use left it. Always gives "".
  std::string StandardDrivers();

  // The commands on the selected driver; without a selection they do nothing. Opening, upload and
  // properties raise what starting them raises.
  void mnuFileOpen_Click();
  void mnuFileDownload_Click();
  void mnuFileUpload_Click();
  void mnuFileProperties_Click();
  void mnuFileMobileDevice_Click();
  void mnuFileInstallMobile_Click();
  void mnuFileDelete_Click();
  void mnuFileRename_Click();
  void mnuFileClose_Click();
  void mnuViewToolbar_Click();
  void mnuViewStatusBar_Click();
  void mnuListViewMode_Click(int index);
  void mnuViewLineUpIcons_Click();
  void mnuViewRefresh_Click();
  void mnuViewOptions_Click();
  void mnuHelpContents_Click();
  void mnuHelpSearch_Click();
  void mnuHelpAbout_Click();

  void lvListView_DblClick();
  void lvListView_KeyPress(int& keyAscii);
  void lvListView_MouseUp(int button);
  void lvListView_ItemClick(ListItem& item);
  void tbToolBar_ButtonClick(const ToolbarButton& button);
  void tmrStuff_Timer();

 private:
  void ConnectHandlers();
  void SetColumnTexts();
  void EnterDataFolder();
  void RestorePlace();
  void RestoreView();
  void SavePlace();
  void AddDrivers();
  bool ChooseFromDisk(std::string& package);
  void StartWithAddingDrivers();
  bool SelectsDriver() const;
  void StartToolOfSelected(std::string_view tool);
  bool IsLoaded() const { return globals_.frontEnd.IsLoaded(*this); }

  Globals& globals_;
  Form& splash_;
  frmAbout about_;
  frmStdDrivers stdDrivers_;
};

}  // namespace tarvo
