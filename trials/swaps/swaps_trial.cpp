#include <cstdlib>
#include <iostream>
#include <random>

#include "actions/install_run.h"
#include "actions/remove_driver.h"
#include "base/absorb.h"
#include "support/memory_folders.h"
#include "support/tree_record.h"
#include "swapper.h"
#include "trial.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;
using ::testing::IsEmpty;

std::uint32_t Seed() {
  const char* chosen = std::getenv("TARVO_TEST_SEED");
  const auto seed = chosen ? static_cast<std::uint32_t>(std::strtoul(chosen, nullptr, 10))
                           : std::random_device{}();
  std::cout << "TARVO_TEST_SEED=" << seed << "\n";
  return seed;
}

// A driver is removed, or installed, again and again while another process swaps its folders and
// files for links to a tree outside that looks the same.
class Swaps : private MemoryFolders, public Installing {
 protected:
  Swaps() {
    status.answer = Answer::kYes;
    for (const char* name :
         {"driver.inf", "Sample.hvd", "Tool.exe", ".tarvo-new-0", ".tarvo-new-3", "own",
          "Data/own.csv", "Data/2025/own.csv", "Maps/near.bmp", "Maps/own", "Maps/Near/harbour.bmp",
          "Palm Kestrel/Tool.exe", "shared"}) {
      folder.WriteFile(std::string("outside/") + name, "kept");
    }
    for (const char* name : {"own", "driver.inf", "shared"}) {
      fs::permissions(folder / ("outside/" + std::string(name)), fs::perms(0444));
    }
    fs::create_hard_link(folder / "outside/shared", folder / "outside/shared2");
    MakePackages();
    for (const char* name : {"stand-ins", "away", "made"}) folder.MakeFolder(name);
    outside = RecordTree(folder / "outside");
  }

  Swap Place(const std::string& name, const std::string& target) const {
    return {folder / InData(name), folder / ("outside" + target), false};
  }

  std::vector<Swap> PlacesInTheDriver() const {
    std::vector<Swap> places;
    for (const char* name :
         {"", "/Data", "/Data/2025", "/Maps", "/Maps/Near", "/driver.inf", "/own", "/Sample.hvd"}) {
      places.push_back(Place(std::string("Drivers/Meter") + name, name));
    }
    places.push_back({folder / InDrivers("Meter/locked"), folder / "outside/shared", true});
    return places;
  }

  // Puts a driver that an earlier install and its tools have left in its place. No path leads
  // through what may be swapped.
  void PutDriver() {
    const std::string made = folder / "made/Meter";
    for (const char* name :
         {"driver.inf", "Sample.hvd", "Tool.exe", ".tarvo-new-3", "own", "locked", "Data/own.csv",
          "Data/2025/own.csv", "Maps/near.bmp", "Maps/Near/harbour.bmp"}) {
      folder.WriteFile(std::string("made/Meter/") + name, "old");
    }
    fs::permissions(made + "/own", fs::perms(0444));
    fs::permissions(made + "/locked", fs::perms(0444));
    PutInPlace(made, folder / InDrivers("Meter"));
  }

  void PutHandHeldFolders() {
    for (const char* name : {"DeviceInstaller", "Win32Device"}) {
      folder.MakeFolder(std::string("made/") + name + "/Palm Kestrel");
      PutInPlace(folder / (std::string("made/") + name), folder / InData(name));
    }
  }

  void ClearAway() {
    for (const auto& entry : fs::directory_iterator(folder / "away")) fs::remove_all(entry);
  }

  // Does it until it has been done often enough and enough has been swapped meanwhile.
  template <typename Prepare, typename Step>
  void WhileSwapping(const std::vector<Swap>& places, const char* figure, const char* what,
                     Prepare&& prepare, Step&& step) {
    const int rounds = Rounds(60, 3000);
    const int enoughSwaps = Rounds(500, 10'000);
    int done = 0;
    int changed = 0;
    long long swaps = 0;
    prepare();
    {
      const Swapper swapper(places, folder / "stand-ins", Seed());
      for (; (done < rounds || swapper.Count() < enoughSwaps) && changed == 0; ++done) {
        prepare();
        step();
        const auto differences = Differences(outside, RecordTree(folder / "outside"));
        EXPECT_THAT(differences, IsEmpty()) << "in round " << done;
        if (!differences.empty()) ++changed;
        ClearAway();
      }
      swaps = swapper.Count();
    }
    TellFigure(figure, Counted(done) + " " + what + " while folders and files were swapped for " +
                           "links " + Counted(swaps) + " times, " + Counted(spoilt) +
                           " of them in their way; " + Counted(changed) +
                           " changed anything outside");
  }

  bool IsThere(const std::string& name) const {
    return fs::exists(fs::symlink_status(folder / InDrivers(name)));
  }

  TreeRecord outside;
  int spoilt = 0;  // removals and installs that did not come to their end

 private:
  void MakePackages() {
    package = Package("Meter_2.drv", {{"Sample.hvd", "T\nFIELDNAME\nLevel (m)\n"},
                                      {"Tool.exe", "new"},
                                      {"own", "new"},
                                      {"Data/2025/new.csv", "new"},
                                      {"Maps/near.bmp", "new"},
                                      {"Maps/Near/harbour.bmp", "new"}});
    for (const char* name : {"Tarvoexe", "DeviceInstaller", "PalmKestrel", "Win32Installer"}) {
      MakePackage(folder, InData(name + std::string(".pkg")), {{"Tool.exe", "new"}});
    }
  }

  // What stood there is put away first; it may come back at any moment.
  void PutInPlace(const std::string& made, const std::string& place) {
    for (int i = 0;; ++i) {
      std::error_code failure;
      fs::rename(place, folder / ("away/" + std::to_string(i) + fs::path(place).stem().string()),
                 failure);
      fs::rename(made, place, failure);
      if (!failure) return;
    }
  }

 protected:
  std::string package;
};

TEST_F(Swaps, LetNoRemovalOutOfTheDriver) {
  WhileSwapping(
      PlacesInTheDriver(), "swaps.removing", "removals",
      [&] {
        fs::current_path(folder / kDataFolder);
        PutDriver();
      },
      [&] {
        // Counting the downloads fails where a folder has just gone.
        Absorb([&] { RemoveDriver(*globals, window, "Meter"); });
        if (IsThere("Meter")) ++spoilt;
      });
}

TEST_F(Swaps, LetNoInstallOutOfTheDriver) {
  std::vector<Swap> places = PlacesInTheDriver();
  places.push_back(Place("DeviceInstaller", ""));
  places.push_back(Place("DeviceInstaller/Palm Kestrel", "/Palm Kestrel"));
  places.push_back(Place("Win32Device", ""));
  WhileSwapping(
      places, "swaps.installing", "re-installs",
      [&] {
        PutDriver();
        PutHandHeldFolders();
      },
      [&] {
        Install({package});
        if (!IsThere("Meter/Data/2025/new.csv")) ++spoilt;
      });
}

}  // namespace
}  // namespace tarvo::test
