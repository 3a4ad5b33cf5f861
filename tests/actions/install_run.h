#pragma once

#include "actions/install_drivers.h"
#include "base/paths.h"
#include "support/list_run.h"
#include "support/made_package.h"

namespace tarvo::test {

// Keeps what would have been started.
class StartingPlatform : public RootedPlatform {
 public:
  using RootedPlatform::RootedPlatform;
  int StartProcess(std::string_view program, const std::vector<std::string>& arguments,
                   StartWindow window) override {
    std::string call(FileNameOf(FolderOf(program)));
    call.append("/").append(FileNameOf(program));
    for (const std::string& argument : arguments) call += " " + argument;
    if (window == StartWindow::kMinimised) call += " (minimised)";
    started.push_back(call);
    return 1;
  }
  std::vector<std::string> started;
};

// Keeps every status text that was drawn, with the pointer of that moment.
class StatusFrontEnd : public RecordingFrontEnd {
 public:
  void Repaint(Form& form) override {
    const auto& window = dynamic_cast<MainWindow&>(form);
    texts.push_back(window.sbStatusBar.Panels[0].Text + (MousePointer() == 11 ? " (busy)" : ""));
  }
  std::vector<std::string> texts;
};

// A run of the install loop over packages made by "zip".
class Installing : public ListRun {
 protected:
  Installing() : starting(folder.Path()) {
    starting.specialFolders = platform.specialFolders;
    globals = std::make_unique<Globals>(starting, status, "");
    globals->OpenSettings();
    folder.MakeFolder(InData("Drivers"));
    Update();
  }

  std::string Package(const std::string& name, PackageFiles files = {}) {
    files.try_emplace("driver.inf", "[Driver]\r\n");
    return MakePackage(folder, InData(name), files);
  }

  bool Install(const std::vector<std::string>& packages, bool fromDialog = false) {
    InstallOrder order;
    order.index = fromDialog ? 0 : 1;
    order.fromDialog = fromDialog;
    order.firstPackage = packages.at(0);
    for (std::size_t i = 0; !fromDialog && i < packages.size(); ++i) {
      window.DriverFileList[static_cast<int>(i) + 1] = packages[i];
    }
    refused = InstallDrivers(*globals, window, order);
    return !refused;
  }

  bool Exists(const std::string& name) { return std::filesystem::exists(folder / InDrivers(name)); }

  StartingPlatform starting;
  StatusFrontEnd status;
  std::optional<RefusedPackage> refused;
};

}  // namespace tarvo::test
