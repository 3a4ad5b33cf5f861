#pragma once

#include <algorithm>
#include <functional>

#include "base/runtime_error.h"
#include "support/made_package.h"
#include "support/started_run.h"
#include "ui/frm_std_drivers.h"

namespace tarvo::test {

// A user in front of the Add Driver window and the open-file dialog.
class ChoosingFrontEnd : public RecordingFrontEnd {
 public:
  void RunModally(Form& form, Form& owner) override {
    auto* chooser = dynamic_cast<frmStdDrivers*>(&form);
    if (!chooser) return RecordingFrontEnd::RunModally(form, owner);
    ++choosersShown;
    if (choose) choose(*chooser);
    Unload(form);  // the close box, when the user has not closed it otherwise
  }
  void ShowOpen(CommonDialog& dialog) override {
    dialogs.push_back(dialog.DialogTitle + "|" + dialog.FileName + "|" + dialog.InitDir);
    if (fileOnDisk.empty()) throw RuntimeError(kDialogCancelled);
    dialog.FileName = fileOnDisk;
  }
  void Yield() override {
    if (whenYielding) whenYielding();
  }

  std::function<void(frmStdDrivers&)> choose;
  std::function<void()> whenYielding;
  std::string fileOnDisk;
  int choosersShown = 0;
  std::vector<std::string> dialogs;
};

// A whole run with packages beside the data, and what the user does about them.
class AddingDrivers : public StartedRun {
 protected:
  AfterStart Start(const std::string& arguments = {}) {
    run = std::make_unique<Tarvo>(platform, user, arguments);
    return run->Start();
  }
  std::string Package(const std::string& name) {
    return MakePackage(folder, InData(name), {{"driver.inf", "[Driver]\r\n"}});
  }
  void ActivateAddItem() {
    Window().lvListView.Select(&Window().lvListView.ItemAt(0));
    Window().lvListView.DblClick();
  }
  static void Choose(frmStdDrivers& chooser, const std::vector<std::size_t>& entries) {
    for (const std::size_t entry : entries) chooser.file_stddrvs.Entries[entry].Selected = true;
    chooser.file_stddrvs.ListIndex = static_cast<int>(entries.back());
    chooser.cmd_adddriver.Click();
  }
  std::vector<std::string> Installed() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder / InData("Drivers"))) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }
  PackageList& Packages() { return Window().DriverFileList; }

  ChoosingFrontEnd user;
};

}  // namespace tarvo::test
