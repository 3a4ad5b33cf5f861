#pragma once

#include <string>

#include "app/globals/globals.h"
#include "catalogue/main_window.h"
#include "ui/frm_about.h"

namespace tarvo {

// The main window: its handlers. Their names are control + "_" + event.
class frmDrivers : public MainWindow {
 public:
  explicit frmDrivers(Globals& globals);

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

  void mnuFileRename_Click();
  void mnuFileClose_Click();
  void mnuViewToolbar_Click();
  void mnuViewStatusBar_Click();
  void mnuListViewMode_Click(int index);
  void mnuViewLineUpIcons_Click();
  void mnuViewRefresh_Click();
  void mnuViewOptions_Click();
  void mnuHelpAbout_Click();

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
  bool IsLoaded() const { return globals_.frontEnd.IsLoaded(*this); }

  Globals& globals_;
  frmAbout about_;
};

}  // namespace tarvo
