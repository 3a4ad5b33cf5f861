#include "catalogue/driver_list.h"

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "base/absorb.h"
#include "base/paths.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "catalogue/command_state.h"
#include "catalogue/data_files.h"
#include "catalogue/drivers_folder.h"
#include "catalogue/version_records.h"
#include "forms/load_picture.h"
#include "platform/names.h"

namespace tarvo {
namespace {

// Steps whose errors are noted and passed over, so that the steps after them still run.
class TolerantSteps {
 public:
  template <typename Step>
  void Try(Step&& step) {
    try {
      step();
    } catch (const RuntimeError&) {
      errorPending_ = true;
    }
  }
  bool ErrorPending() const { return errorPending_; }
  void Clear() { errorPending_ = false; }

 private:
  bool errorPending_ = false;
};

std::vector<std::string> DriversInCurrentFolder(Platform& platform) {
  // Plain files are listed beside folders, and no attribute is tested: a file in `Drivers` is a
  // driver too.
  std::vector<std::string> names;
  for (FolderEntry& entry : ListFolder(platform, platform.CurrentFolder(), "*.*", kDirectory)) {
    names.push_back(std::move(entry.name));
  }
  return names;
}

// "driver.ICO" for both lists, or "Large.ICO" and "Small.BMP" when any part of that fails. None
// where no picture can be seen.
void AddImages(Globals& globals, MainWindow& window, const std::string& name, int index,
               TolerantSteps& steps) {
  if (!globals.frontEnd.ShowsPictures()) return;
  const auto add = [&](ImageList& list, std::string_view file) {
    steps.Try([&] { list.Add(index, name, LoadPicture(globals.platform, JoinPath(name, file))); });
  };
  PicturePointer icon;
  steps.Try([&] { icon = LoadPicture(globals.platform, JoinPath(name, "driver.ICO")); });
  if (icon) {
    steps.Try([&] { window.imlListView.Add(index, name, icon); });
    steps.Try([&] { window.imlSListView.Add(index, name, icon); });
  }
  if (!steps.ErrorPending()) return;
  steps.Clear();
  add(window.imlListView, "Large.ICO");
  add(window.imlSListView, "Small.BMP");
}

// Counts and versions. What fails leaves its column as it is.
void FillSubItems(Globals& globals, const ToolVersions& versions, const std::string& name,
                  ListItem& item, TolerantSteps& steps) {
  DataFileTree files(globals.platform, globals.frontEnd, name);
  for (std::size_t pattern = 0; pattern < kDataFilePatterns.size(); ++pattern) {
    steps.Try([&] {
      std::string text = std::to_string(files.Count(pattern));
      const bool alwaysShown = pattern == 0;
      if (!alwaysShown && globals.library.ToNumber(text) == 0) text.clear();
      item.SubItems[pattern] = std::move(text);
    });
  }
  for (std::size_t tool = 0; tool < kToolSuffixes.size(); ++tool) {
    steps.Try([&] {
      item.SubItems[kDataFilePatterns.size() + tool] = versions.Of(name, kToolSuffixes[tool]);
    });
  }
}

// Adds one driver to the list; true when nothing failed.
bool AddDriver(Globals& globals, MainWindow& window, const ToolVersions& versions,
               const std::string& name, int imageIndex) {
  TolerantSteps steps;
  AddImages(globals, window, name, imageIndex, steps);
  ListItem* item = nullptr;
  steps.Try([&] { item = &window.lvListView.Add(name, name, imageIndex, imageIndex); });
  if (item) FillSubItems(globals, versions, name, *item, steps);
  return !steps.ErrorPending();
}

// An empty list with its image lists attached, which hold the "Add Driver" picture only.
void EmptyList(MainWindow& window) {
  // An image list must be detached before it is cleared.
  window.lvListView.Icons = nullptr;
  window.lvListView.SmallIcons = nullptr;
  window.lvListView.Clear();
  window.imlListView.Clear();
  window.imlSListView.Clear();
  window.imlListView.Add(1, "", window.imgNew.Picture);
  window.imlSListView.Add(1, "", window.imgSNew.Picture);
  window.lvListView.Icons = &window.imlListView;
  window.lvListView.SmallIcons = &window.imlSListView;
}

void RebuildList(Globals& globals, MainWindow& window) {
  EmptyList(window);
  ListItem& addItem =
      window.lvListView.Add(kAddItemKey, "(" + globals.Translate("Add Driver") + ")", 1, 1);
  addItem.StandsFirst = true;
  int imageCounter = 1;
  const std::string holder = EnterDriversFolder(globals.platform, window.dataPath);
  const std::vector<std::string> drivers = DriversInCurrentFolder(globals.platform);
  const ToolVersions versions(globals, drivers);
  for (const std::string& driver : drivers) {
    // The counter stays when anything failed, so the next driver inserts its images at the same
    // index and is seen with this one's where one of the two was missing.
    if (AddDriver(globals, window, versions, driver, imageCounter + 1)) ++imageCounter;
  }
  globals.platform.ChangeCurrentFolder(holder);
  ResetMenu(globals.platform, window);
}

// The driver of that name in any letter case, an exact match first.
std::optional<std::string> FindDriver(Platform& platform, std::string_view name) {
  std::optional<std::string> found;
  for (const std::string& driver : DriversInCurrentFolder(platform)) {
    if (driver == name) return driver;
    if (!found && EqualIgnoringCase(driver, name)) found = driver;
  }
  return found;
}

void RefreshSelectedItem(Globals& globals, MainWindow& window) {
  ListItem* selected = window.lvListView.SelectedItem();
  if (!selected) return;
  const std::string holder = EnterDriversFolder(globals.platform, window.dataPath);
  if (const auto driver = FindDriver(globals.platform, selected->Text)) {
    TolerantSteps steps;
    FillSubItems(globals, ToolVersions(globals, {*driver}), *driver, *selected, steps);
  }
  globals.platform.ChangeCurrentFolder(holder);
  window.lvListView.Touch();
}

}  // namespace

void UpdateDriverList(Globals& globals, MainWindow& window, std::string_view mode) {
  if (mode == kCurrentDriver) {
    RefreshSelectedItem(globals, window);
  } else {
    RebuildList(globals, window);
  }
}

void TryUpdateDriverList(Globals& globals, MainWindow& window, std::string_view mode) {
  Platform& platform = globals.platform;
  std::string folder = window.dataPath;  // where the current folder is not known
  Absorb([&] { folder = platform.CurrentFolder(); });
  if (Absorb([&] { UpdateDriverList(globals, window, mode); })) return;
  Absorb([&] { platform.ChangeCurrentFolder(ResolveName(platform, folder)); });
}

}  // namespace tarvo
