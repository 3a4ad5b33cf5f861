#include "actions/remove_driver.h"

#include "base/absorb.h"
#include "base/paths.h"
#include "base/runtime_error.h"
#include "catalogue/data_files.h"
#include "catalogue/driver_list.h"
#include "catalogue/drivers_folder.h"
#include "catalogue/folder_deletion.h"
#include "catalogue/version_records.h"
#include "platform/names.h"

namespace tarvo {
namespace {

int CountDownloads(Globals& globals, const std::string& name) {
  Platform& platform = globals.platform;
  if (platform.IsLink(DriverFolderPath(platform, name))) return 0;
  // The way back is the path of the folder that was left: ".." would lead elsewhere where "Drivers"
  // is a link.
  const std::string holder = platform.CurrentFolder();
  platform.ChangeCurrentFolder(ResolveName(platform, "Drivers"));
  DataFileTree files(platform, globals.frontEnd, name);
  int downloads = 0;
  for (std::size_t pattern = 0; pattern < kDataFilePatterns.size(); ++pattern) {
    downloads += files.Count(pattern);
  }
  platform.ChangeCurrentFolder(holder);
  return downloads;
}

bool IsConfirmed(Globals& globals, const std::string& text) {
  return globals.frontEnd.MsgBox(text, MessageButtons::kYesNo, MessageIcon::kQuestion,
                                 globals.Translate("Remove Driver")) == Answer::kYes;
}

bool IsConfirmedWithDownloads(Globals& globals, int downloads) {
  const std::string sure = globals.Translate("Are you sure?");
  if (!IsConfirmed(globals, sure)) return false;
  if (downloads <= 0) return true;
  return IsConfirmed(
      globals,
      globals.Translate("You have %1 downloads for this driver.", std::to_string(downloads)) +
          "\r" + globals.Translate("Removing the driver will also erase these files.") + "\r" +
          sure);
}

// Of a file with other names only this one goes: its attributes are those of the others, too.
void MakeFileRemovable(Platform& platform, const std::string& path) {
  if (platform.HasOtherNames(path)) {
    platform.RemoveFile(path);
  } else {
    platform.SetAttributes(path, kNormal);
  }
}

// Read-only files would stay. Only the driver's own folder is looked at, not the ones below it.
void MakeFilesRemovable(Platform& platform, const std::string& folder) {
  if (platform.IsLink(folder)) return;
  for (const FolderEntry& file : ListFolder(platform, folder, "*.*", kHidden)) {
    Absorb([&] { MakeFileRemovable(platform, JoinPath(folder, file.name)); });
  }
}

// Links that somebody puts in the place of the driver's folders meanwhile are not followed.
void RemoveFolderOfDriver(Globals& globals, const std::string& folder) {
  const auto drivers = globals.platform.HoldFolder(FolderOf(folder));
  Absorb([&] { MakeFilesRemovable(globals.platform, folder); });
  DeleteFolderTree(globals.platform, globals.frontEnd, folder);
}

}  // namespace

bool RemoveDriver(Globals& globals, MainWindow& window, const std::string& name) {
  Platform& platform = globals.platform;
  if (!IsConfirmedWithDownloads(globals, CountDownloads(globals, name))) return false;
  const std::string folder = DriverFolderPath(platform, name);
  Absorb([&] { RemoveFolderOfDriver(globals, folder); });
  Absorb([&] { RemoveReg(platform, name); });
  UpdateDriverList(globals, window);
  return true;
}

}  // namespace tarvo
