#include <sys/stat.h>

#include "actions/install_run.h"
#include "actions/remove_driver.h"
#include "archive/archive_maker.h"
#include "layouts.h"
#include "support/memory_folders.h"
#include "support/tree_record.h"
#include "trial.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

struct Tally {
  int tried = 0;
  int changed = 0;
};

// A driver and all that is installed with one, beside a tree that nothing may change: in each
// layout of links the driver is removed, installed and re-installed.
class Links : private MemoryFolders, public Installing {
 protected:
  Links() {
    MakeOutside();
    MakeDriver("Meter");
    MakeDriver("Other");
    PackDriver();
    for (const char* package : {"Tarvoexe", "DeviceInstaller", "PalmKestrel", "Win32Installer"}) {
      folder.WriteFile(InData(package + std::string(".pkg")),
                       ArchiveOf({{.name = "Tool.exe", .content = "new"}}));
    }
    status.answer = Answer::kYes;
  }

  ~Links() override {
    for (const char* fixed : {"outside/fixed", "documents"}) Loosen(folder / fixed);
  }

  Ground TheGround() const {
    return {folder.Path(), folder / kDataFolder, folder / InData("Drivers"),
            folder / InDrivers("Meter"), folder / "outside"};
  }

  // Does it in a layout and looks at what stands outside. The neighbour of the driver is outside,
  // too.
  template <typename Step>
  void In(const Layout& layout, Tally& tally, Step&& step) {
    const Ground ground = TheGround();
    layout.make(ground);
    const TreeRecord outside = RecordTree(ground.outside);
    const TreeRecord other = RecordTree(ground.drivers + "/Other");
    step();
    ++tally.tried;
    const bool held =
        IsUnchanged(outside, ground.outside) && IsUnchanged(other, ground.drivers + "/Other");
    if (!held) ++tally.changed;
  }

  // A file in a driver's place is no driver that could be removed.
  void Remove() {
    try {
      RemoveDriver(*globals, window, "Meter");
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.Number(), kPathNotFound);
    }
  }
  void InstallMeter() { Install({folder / InData("Meter_2.drv")}); }

 private:
  void MakeOutside() {
    for (const char* name :
         {"kept.csv", "locked.csv", "driver.inf", "Sample.hvd", "Download.EXE", "folder/near.bmp",
          "folder/Near/harbour.bmp", "folder/.tarvo-new-0", "folder/Tool.exe", "fixed/kept.txt",
          "Data/2025.csv", "Meter/driver.inf", "Meter/Data/kept.csv", "Meter/Sample.hvd",
          "Meter/.tarvo-new-1"}) {
      folder.WriteFile(std::string("outside/") + name, std::string("the content of ") + name);
    }
    folder.MakeFolder("outside/empty");
    fs::permissions(folder / "outside/locked.csv", fs::perms(0440));
    fs::permissions(folder / "outside/Download.EXE", fs::perms(0755));
    fs::permissions(folder / "outside/fixed", fs::perms(0555));
    fs::permissions(folder / "outside/Meter/driver.inf", fs::perms(0444));
    fs::create_symlink("folder", folder / "outside/link");
    EXPECT_EQ(::mkfifo((folder / "outside/pipe").c_str(), 0600), 0);
  }

  void MakeDriver(const std::string& name) {
    for (const char* file :
         {"driver.inf", "Download.EXE", "Sample.hvd", "Large.ICO", "Data/own.csv",
          "Data/2025/old.csv", "Maps/near.bmp", "Maps/Near/harbour.bmp", ".hidden/note"}) {
      DriverFile(name + "/" + file, "old");
    }
    fs::permissions(folder / InDrivers(name + "/Large.ICO"), fs::perms(0444));
  }

  void PackDriver() const {
    std::vector<MadeMember> members;
    for (const char* name : {"driver.inf", "Download.EXE", "Large.ICO", "Maps/near.bmp",
                             "Maps/Near/harbour.bmp", "Maps/Far/away.bmp"}) {
      members.push_back({.name = name, .content = "new"});
    }
    members.push_back({.name = "Sample.hvd", .content = "Title\r\nFIELDNAME\r\nLevel (m)\r\n"});
    folder.WriteFile(InData("Meter_2.drv"), ArchiveOf(members));
  }

  // Lets the folder be removed at the end, as far as no link is followed for it.
  static void Loosen(const fs::path& path) {
    if (!fs::is_directory(fs::symlink_status(path))) return;
    fs::permissions(path, fs::perms::owner_all, fs::perm_options::add);
    for (const auto& entry : fs::directory_iterator(path)) Loosen(entry.path());
  }

  static bool IsUnchanged(const TreeRecord& before, const std::string& path) {
    const std::vector<std::string> differences = Differences(before, RecordTree(path));
    for (const std::string& line : differences) ADD_FAILURE() << path << ": " << line;
    return differences.empty();
  }
};

class TreesOutside : public Links, public ::testing::WithParamInterface<Layout> {
 protected:
  static void TearDownTestSuite() {
    const auto tell = [](const char* name, const Tally& tally, const char* what) {
      TellFigure(name, Counted(tally.tried) + " " + what + ", " + Counted(tally.changed) +
                           " changed anything outside");
    };
    tell("links.removing", removals, "layouts, a removal in each");
    tell("links.installing", installs, "installs and re-installs in as many layouts");
  }

  static inline Tally removals;
  static inline Tally installs;
};

TEST_P(TreesOutside, AreAsTheyWereAfterARemoval) {
  In(GetParam(), removals, [&] { Remove(); });
}

TEST_P(TreesOutside, AreAsTheyWereAfterAReinstall) {
  In(GetParam(), installs, [&] { InstallMeter(); });
}

TEST_P(TreesOutside, AreAsTheyWereAfterARemovalAndAnInstallOfWhatWasRemoved) {
  In(GetParam(), installs, [&] {
    Remove();
    InstallMeter();
    Remove();
  });
}

INSTANTIATE_TEST_SUITE_P(With, TreesOutside, ::testing::ValuesIn(Layouts()),
                         [](const auto& layout) { return std::string(layout.param.name); });

}  // namespace
}  // namespace tarvo::test
