#include "actions/remove_driver.h"
#include "base/absorb.h"
#include "install_run.h"
#include "support/memory_folders.h"
#include "support/tree_record.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;
using ::testing::IsEmpty;

// Lets something happen right before one of the calls that reach the disk by a path.
class InterferedPlatform : public RootedPlatform {
 public:
  using RootedPlatform::RootedPlatform;

  int calls = 0;
  int fatalCall = 0;  // counted from 1; 0 for none
  std::function<void()> interfere;

  std::unique_ptr<HeldFolder> HoldFolder(std::string_view path) override {
    Count();
    return RootedPlatform::HoldFolder(path);
  }
  std::vector<FolderEntry> Entries(std::string_view path) override {
    Count();
    return RootedPlatform::Entries(path);
  }
  std::optional<unsigned> Attributes(std::string_view path) override {
    Count();
    return RootedPlatform::Attributes(path);
  }
  bool IsLink(std::string_view path) override {
    Count();
    return RootedPlatform::IsLink(path);
  }
  bool HasOtherNames(std::string_view path) override {
    Count();
    return RootedPlatform::HasOtherNames(path);
  }
  void SetAttributes(std::string_view path, unsigned attributes) override {
    Count();
    RootedPlatform::SetAttributes(path, attributes);
  }
  void MakeFolder(std::string_view path) override {
    Count();
    RootedPlatform::MakeFolder(path);
  }
  std::unique_ptr<File> OpenFile(std::string_view path, OpenFor use) override {
    Count();
    return RootedPlatform::OpenFile(path, use);
  }
  std::unique_ptr<File> MakeFile(std::string_view path, FileUse use) override {
    Count();
    return RootedPlatform::MakeFile(path, use);
  }
  void RenameFile(std::string_view path, std::string_view newPath) override {
    Count();
    RootedPlatform::RenameFile(path, newPath);
  }
  void RemoveFile(std::string_view path) override {
    Count();
    RootedPlatform::RemoveFile(path);
  }
  void RemoveFolder(std::string_view path) override {
    Count();
    RootedPlatform::RemoveFolder(path);
  }
  int StartProcess(std::string_view, const std::vector<std::string>&, StartWindow) override {
    return 1;
  }

 private:
  void Count() {
    if (++calls == fatalCall) interfere();
  }
};

// Before each call that a removal or an install makes, one of the folders that it works in gives
// way to a link to a folder outside that looks the same.
class SwappedFolders : private MemoryFolders, public ListRun {
 protected:
  SwappedFolders() : system(folder.Path()) {
    system.specialFolders = platform.specialFolders;
    globals = std::make_unique<Globals>(system, frontEnd, "");
    globals->OpenSettings();
    frontEnd.answer = Answer::kYes;
    for (const char* name : {"driver.inf", "Sample.hvd", "Tool.exe", ".tarvo-new-0", ".tarvo-new-7",
                             "own", "Data/own.csv", "Data/2025/own.csv", "Maps/near.bmp",
                             "Maps/own", "Maps/Near/harbour.bmp", "Palm Kestrel/Tool.exe"}) {
      folder.WriteFile(std::string("outside/") + name, "kept");
    }
    fs::permissions(folder / "outside/own", fs::perms(0444));
    fs::permissions(folder / "outside/driver.inf", fs::perms(0444));
    outside = RecordTree(folder / "outside");
    package = MakePackage(folder, InData("Meter_2.drv"),
                          {{"driver.inf", "[Driver]\r\n"},
                           {"Sample.hvd", "T\nFIELDNAME\nLevel (m)\n"},
                           {"Tool.exe", "new"},
                           {"Data/2025/new.csv", "new"},
                           {"Maps/near.bmp", "new"},
                           {"Maps/Near/harbour.bmp", "new"}});
    for (const char* name : {"Tarvoexe", "DeviceInstaller", "PalmKestrel", "Win32Installer"}) {
      MakePackage(folder, InData(name + std::string(".pkg")), {{"Tool.exe", "new"}});
    }
  }

  // A driver as an earlier install and its tools have left it.
  void MakeDriver() {
    fs::current_path(folder / kDataFolder);  // a removal that fails stays in "Drivers"
    for (const char* name : {"Drivers", "DeviceInstaller", "Win32Device", "swapped"}) {
      fs::remove_all(folder / InData(name));
    }
    for (const char* name : {"driver.inf", "Sample.hvd", "Tool.exe", ".tarvo-new-7", "own",
                             "Data/own.csv", "Data/2025/own.csv", "Maps/near.bmp"}) {
      DriverFile(std::string("Meter/") + name, "old");
    }
    fs::permissions(folder / InDrivers("Meter/own"), fs::perms(0444));
    folder.MakeFolder(InData("DeviceInstaller/Palm Kestrel"));
    folder.MakeFolder(InData("Win32Device"));
  }

  void Swap(const std::string& name, const std::string& target) {
    const std::string place = folder / InData(name);
    if (!fs::exists(place)) return;  // not made yet, or removed already
    fs::rename(place, folder / InData("swapped"));
    fs::create_directory_symlink(folder / ("outside" + target), place);
  }

  // Does it again and again, with the swap before another call each time.
  template <typename Step>
  void ExpectNothingChangedOutside(const std::string& name, const std::string& target,
                                   Step&& step) {
    SCOPED_TRACE(name);
    system.interfere = [&] { Swap(name, target); };
    for (system.fatalCall = 1;; ++system.fatalCall) {
      MakeDriver();
      system.calls = 0;
      step();
      if (system.calls < system.fatalCall) break;
      EXPECT_THAT(Differences(outside, RecordTree(folder / "outside")), IsEmpty())
          << "before call " << system.fatalCall;
      if (HasFailure()) return;
    }
    EXPECT_GT(system.fatalCall, 20);
  }

  void Install() {
    window.DriverFileList[1] = package;
    InstallOrder order;
    order.firstPackage = package;
    InstallDrivers(*globals, window, order);
  }

  // Counting the downloads fails where the folder has gone.
  void Remove() {
    Absorb([&] { RemoveDriver(*globals, window, "Meter"); });
  }

  InterferedPlatform system;
  TreeRecord outside;
  std::string package;
};

TEST_F(SwappedFolders, AreNotEnteredByARemoval) {
  for (const char* name : {"", "/Data", "/Data/2025", "/Maps"}) {
    ExpectNothingChangedOutside(std::string("Drivers/Meter") + name, name, [&] { Remove(); });
  }
}

TEST_F(SwappedFolders, AreNotEnteredByAnInstall) {
  for (const char* name : {"", "/Data", "/Data/2025", "/Maps", "/Maps/Near"}) {
    ExpectNothingChangedOutside(std::string("Drivers/Meter") + name, name, [&] { Install(); });
  }
}

TEST_F(SwappedFolders, AreNotEnteredForHandHeldComponents) {
  for (const char* name : {"DeviceInstaller", "DeviceInstaller/Palm Kestrel", "Win32Device"}) {
    ExpectNothingChangedOutside(name, "", [&] { Install(); });
  }
}

}  // namespace
}  // namespace tarvo::test
