#pragma once

#include "app/globals/globals.h"
#include "catalogue/package_list.h"
#include "forms/controls.h"
#include "forms/form.h"

namespace tarvo {

// The Add Driver window: lists the packages of a folder for the user to choose one or several, or
// to ask for another disk, or to cancel. It answers through the package list: entries from 1 on for
// the chosen ones, an empty entry 1 for another disk, "CANCEL" in entry 1 when it is closed in any
// other way.
class frmStdDrivers : public Form {
 public:
  frmStdDrivers(Globals& globals, PackageList& packages);

  // Clears the package list up to its first empty entry, translates the window and sets the answer
  // to "CANCEL". The folder in file_stddrvs has been set before.
  void Form_Load() override;

  // Collects the selected packages and closes the window; nothing without a current entry. With a
  // current entry but none selected the answer stays "CANCEL". Error 9 for more than 100.
  void cmd_adddriver_Click();
  void cmd_havedisk_Click();
  void cmd_cancel_Click();
  void file_stddrvs_DblClick();

  Frame Frame1;
  FileListBox file_stddrvs;
  Button cmd_adddriver;
  Button cmd_havedisk;
  Button cmd_cancel;

 private:
  void Design();

  Globals& globals_;
  PackageList& packages_;
};

}  // namespace tarvo
