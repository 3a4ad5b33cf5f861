#include "actions/install_drivers.h"

#include "actions/field_definitions.h"
#include "actions/hand_held.h"
#include "archive/package.h"
#include "base/absorb.h"
#include "base/paths.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "catalogue/driver_list.h"
#include "catalogue/drivers_folder.h"
#include "platform/names.h"

namespace tarvo {
namespace {

constexpr std::size_t kExtensionLength = 4;  // of ".drv"
constexpr std::string_view kSeparators = "/\\";

void ShowStatus(Globals& globals, MainWindow& window, std::string text) {
  window.sbStatusBar.Panels[0].Text = std::move(text);
  globals.frontEnd.Repaint(window);
}

void RefuseAsInvalid(Globals& globals) {
  globals.frontEnd.SetMousePointer(kDefaultPointer);
  globals.frontEnd.MsgBox(globals.Translate("Invalid Driver file"), MessageButtons::kOk,
                          MessageIcon::kExclamation, globals.translator.ApplicationTitle());
}

// What has become of a package.
struct Outcome {
  std::string fault;            // why it is invalid, and then nothing has been written
  bool hasDefinitions = false;  // whether the description, old or new, ends with its definitions
};

// Lest anything is written through a link in the place of the driver's folder. Nothing is held as
// long as there are no drivers: unpacking makes all the folders then.
std::unique_ptr<HeldFolder> HoldDrivers(Platform& platform, const std::string& driverFolder) {
  const std::string_view drivers = FolderOf(driverFolder);
  return platform.Attributes(drivers) ? platform.HoldFolder(drivers) : nullptr;
}

Outcome CheckAndUnpack(Platform& platform, const std::string& path, const std::string& name,
                       const std::string& folder) {
  if (!IsDriverName(name)) return {"The file's name begins with no driver's name."};
  Package package(platform, path);
  if (const auto fault = package.Check()) return {fault->sentence};
  Outcome outcome;
  outcome.hasDefinitions = HasFieldDefinitions(platform, folder);
  std::string definitions;
  const bool areKnown =
      Absorb([&] { definitions = DefinitionsWithPackage(platform, package, folder); });
  Absorb([&] {
    const auto drivers = HoldDrivers(platform, folder);
    package.Unpack(folder, [&](File& description) { AppendDefinitions(description, definitions); });
    outcome.hasDefinitions = areKnown;
  });
  return outcome;
}

// Every program of the driver, hidden ones included, records its version; nothing waits for them.
void LetToolsRecordVersions(Platform& platform, const std::string& folder) {
  for (const FolderEntry& program : ListFolder(platform, folder, "*.exe", kHidden)) {
    Absorb([&] {
      platform.StartProcess(JoinPath(folder, program.name), {"/v"}, StartWindow::kMinimised);
    });
  }
}

// A failure to unpack is not looked at: the steps find what is there. What an earlier install has
// appended to a description that stays is not appended again.
void FinishDriver(Globals& globals, MainWindow& window, const std::string& folder,
                  bool hasDefinitions) {
  Platform& platform = globals.platform;
  const auto drivers = platform.HoldFolder(FolderOf(folder));
  const auto driver = platform.HoldFolder(folder);
  Absorb([&] { platform.MakeFolder(ResolveName(platform, JoinPath(folder, "Data"))); });
  std::string sample;
  Absorb([&] { sample = SampleFile(platform, folder); });
  if (!sample.empty()) {
    if (!hasDefinitions) Absorb([&] { AppendFieldDefinitions(platform, folder); });
    InstallHandHeldPackages(platform, window.dataPath, folder);
  }
  Absorb([&] { LetToolsRecordVersions(platform, folder); });
}

void StartPropertiesTool(Platform& platform, const std::string& folder) {
  const std::string tool = ResolveName(platform, JoinPath(folder, "properties.exe"));
  if (!FileExists(platform, tool)) return;
  Absorb([&] { platform.StartProcess(tool, {}, StartWindow::kNormal); });
}

}  // namespace

std::string DriverNameOfPackage(std::string_view path) {
  const std::string_view file = FileNameOf(path);
  const std::size_t length = CharacterCount(file);
  if (length < kExtensionLength) throw RuntimeError(kInvalidProcedureCall);
  std::size_t end = 0;
  for (std::size_t i = kExtensionLength; i < length; ++i) end += CharacterAt(file, end).size;
  const std::string_view name = file.substr(0, end);
  return std::string(name.substr(0, name.find('_')));
}

bool IsDriverName(std::string_view name) {
  return !name.empty() && name != "." && name != ".." &&
         name.find_first_of(kSeparators) == std::string_view::npos;
}

std::optional<RefusedPackage> InstallDrivers(Globals& globals, MainWindow& window,
                                             const InstallOrder& order) {
  FrontEnd& frontEnd = globals.frontEnd;
  int index = order.index;
  std::string folder;
  for (std::string package = order.firstPackage; !package.empty();) {
    frontEnd.SetMousePointer(kHourglassPointer);
    const std::string name = DriverNameOfPackage(package);
    ShowStatus(globals, window, name + " ...");
    folder = DriverFolderPath(globals.platform, name);
    const Outcome outcome = CheckAndUnpack(globals.platform, package, name, folder);
    if (!outcome.fault.empty()) {
      RefuseAsInvalid(globals);
      return RefusedPackage{package, outcome.fault};
    }
    Absorb([&] { FinishDriver(globals, window, folder, outcome.hasDefinitions); });
    package = window.DriverFileList.After(index++);
  }
  ShowStatus(globals, window, {});
  const bool isSingle = index - 1 == 1 || order.fromDialog;
  if (!window.Refreshing && isSingle) {
    StartPropertiesTool(globals.platform, folder);
  }
  frontEnd.SetMousePointer(kDefaultPointer);
  TryUpdateDriverList(globals, window);
  return std::nullopt;
}

int CollectPackagesOfInstalledDrivers(Globals& globals, MainWindow& window) {
  Platform& platform = globals.platform;
  const std::string base = WithSeparator(window.dataPath);
  FileListBox& files = window.file_drivers;
  files.Path = base;
  files.Refresh(platform);
  int counter = 1;
  for (const FileListBox::Entry& file : files.Entries) {
    const std::size_t end = file.Name.find('_');
    if (end == std::string::npos) throw RuntimeError(kInvalidProcedureCall);
    const std::string name = file.Name.substr(0, end);
    if (!IsDriverName(name) || !FolderExists(platform, JoinPath(base + "Drivers", name))) continue;
    window.DriverFileList[counter++] = base + file.Name;
  }
  return counter - 1;
}

}  // namespace tarvo
