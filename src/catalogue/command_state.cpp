#include "catalogue/command_state.h"

#include "base/paths.h"
#include "base/runtime_error.h"
#include "catalogue/driver_list.h"
#include "catalogue/drivers_folder.h"
#include "platform/names.h"

namespace tarvo {
namespace {

struct MirroredCommand {
  std::string_view buttonKey;
  MenuItem MainWindow::*entry;
};

constexpr MirroredCommand kMirroredCommands[] = {
    {"Download", &MainWindow::mnuFileDownload},
    {"Upload", &MainWindow::mnuFileUpload},
    {"DriverProperties", &MainWindow::mnuFileProperties},
};

// The selected driver's folder; "" when the folder that holds `Drivers` has vanished, so that
// nothing is found in it.
std::string FolderOfItem(Platform& platform, const ListItem& item) {
  constexpr std::string_view kAddFolder = "Add";
  try {
    return DriverFolderPath(platform, item.Key == kAddItemKey ? kAddFolder : item.Text);
  } catch (const RuntimeError&) {
    return {};
  }
}

bool HoldsSampleFile(Platform& platform, const std::string& folder) {
  try {
    return !folder.empty() && !ListFolder(platform, folder, "*.hvd", kHidden).empty();
  } catch (const RuntimeError&) {
    return false;  // nothing is found in a folder that cannot be listed
  }
}

}  // namespace

void ResetMenu(Platform& platform, MainWindow& window) {
  for (MenuItem* entry : {&window.mnuFileDownload, &window.mnuFileUpload, &window.mnuFileProperties,
                          &window.mnuFileDelete}) {
    entry->Enabled = false;
  }
  window.mnuFileMobileDevice.Visible =
      FolderExists(platform, JoinPath(window.dataPath, "Win32Device"));
}

void AllowCommandsOf(Platform& platform, MainWindow& window, const ListItem& item) {
  const std::string folder = FolderOfItem(platform, item);
  const auto holds = [&](std::string_view name) {
    return !folder.empty() && FileExists(platform, JoinPath(folder, name));
  };
  window.mnuFileDownload.Enabled = holds("Download.EXE");
  window.mnuFileUpload.Enabled = holds("Upload.EXE");
  window.mnuFileProperties.Enabled = holds("Properties.EXE");
  window.mnuFileDelete.Enabled = item.Key != kAddItemKey;
  window.mnuFileInstallMobile.Enabled = HoldsSampleFile(platform, folder);
  ButtonControl(window);
}

void ButtonControl(MainWindow& window) {
  for (const MirroredCommand& command : kMirroredCommands) {
    window.tbToolBar.ButtonByKey(command.buttonKey).Enabled = (window.*command.entry).Enabled;
  }
}

}  // namespace tarvo
