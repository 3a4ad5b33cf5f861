#include "ui/frm_std_drivers.h"

#include <string>
#include <vector>

#include "base/paths.h"

namespace tarvo {

frmStdDrivers::frmStdDrivers(Globals& globals, PackageList& packages)
    : Form("frmStdDrivers", ""), globals_(globals), packages_(packages) {
  Enter(Frame1, "Frame1");
  Enter(file_stddrvs, "file_stddrvs");
  Enter(cmd_adddriver, "cmd_adddriver");
  Enter(cmd_havedisk, "cmd_havedisk");
  Enter(cmd_cancel, "cmd_cancel");
  file_stddrvs.Pattern = kPackagePattern;
  file_stddrvs.DblClick = [this] { file_stddrvs_DblClick(); };
  cmd_adddriver.Click = [this] { cmd_adddriver_Click(); };
  cmd_havedisk.Click = [this] { cmd_havedisk_Click(); };
  cmd_cancel.Click = [this] { cmd_cancel_Click(); };
  cmd_adddriver.IsDefault = true;
  cmd_cancel.IsCancel = true;
  Design();
}

// Each load starts from the design texts, so that they are translated once.
void frmStdDrivers::Design() {
  Caption = Phrase("Add Driver");
  Place = {0, 0, 7200, 4200};
  Frame1.Caption = Phrase("Select Driver");
  Frame1.Place = {180, 120, 4320, 3900};
  file_stddrvs.Place = {360, 480, 3960, 3360};
  cmd_adddriver.Caption = Phrase("Add Driver");
  cmd_adddriver.Place = {4680, 390, 2340, 420};
  cmd_havedisk.Caption = Phrase("Have Disk...");
  cmd_havedisk.Place = {4680, 930, 2340, 420};
  cmd_cancel.Caption = Phrase("Cancel");
  cmd_cancel.Place = {4680, 1470, 2340, 420};
}

void frmStdDrivers::Form_Load() {
  for (int i = 1; i <= PackageList::kLast && !packages_[i].empty(); ++i) packages_[i].clear();
  Design();
  globals_.translator.TranslateWindow(*this);
  packages_[1] = PackageList::kCancel;
}

void frmStdDrivers::cmd_adddriver_Click() {
  if (file_stddrvs.ListIndex == -1) return;
  std::vector<std::string> chosen;
  for (std::size_t i = 0; i < file_stddrvs.Entries.size(); ++i) {
    globals_.frontEnd.Yield();
    // Closed by the user meanwhile: that answer holds.
    if (!globals_.frontEnd.IsLoaded(*this) || i >= file_stddrvs.Entries.size()) return;
    if (!file_stddrvs.Entries[i].Selected) continue;
    chosen.push_back(WithSeparator(file_stddrvs.Path) + file_stddrvs.Entries[i].Name);
  }
  int index = 1;
  for (std::string& path : chosen) packages_[index++] = std::move(path);
  globals_.frontEnd.Unload(*this);
}

void frmStdDrivers::file_stddrvs_DblClick() { cmd_adddriver_Click(); }

void frmStdDrivers::cmd_havedisk_Click() {
  packages_[1].clear();
  globals_.frontEnd.Unload(*this);
}

void frmStdDrivers::cmd_cancel_Click() {
  packages_[1] = PackageList::kCancel;
  globals_.frontEnd.Unload(*this);
}

}  // namespace tarvo
