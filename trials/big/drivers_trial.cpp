#include "big_run.h"
#include "deep_folder.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class BigDrivers : public BigRun {
 protected:
  std::ptrdiff_t FilesIn(const std::string& name) const {
    return std::distance(fs::directory_iterator(folder / InDrivers(name)),
                         fs::directory_iterator());
  }
};

TEST_F(BigDrivers, AreCountedReinstalledAndRemovedWithAHundredThousandDownloads) {
  const int files = Rounds(9'000, 99'999);
  const std::vector<std::string> extensions = {".csv", ".asc", ".TXT"};
  for (int i = 0; i < files; ++i) {
    DriverFile("Meter/Data/" + std::to_string(i) + extensions[static_cast<std::size_t>(i) % 3]);
  }
  DriverFile("Meter/Data/first.csv", "only here");
  const std::string third = std::to_string(files / 3);
  Update();
  EXPECT_THAT(Counts("Meter"), ElementsAre(std::to_string(files / 3 + 1), third, third));
  EXPECT_TRUE(Install({Pack("Meter_2.drv", {{.name = "Data/new.csv", .content = "new"}})}));
  EXPECT_EQ(FilesIn("Meter/Data"), files + 2);
  EXPECT_EQ(folder.ReadFile(InDrivers("Meter/Data/first.csv")), "only here");
  EXPECT_THAT(Counts("Meter"), ElementsAre(std::to_string(files / 3 + 2), third, third));
  EXPECT_EQ(Remove("Meter"), 0);
  EXPECT_THAT(LastMessage(), HasSubstr("You have " + std::to_string(files + 2) + " downloads"));
  EXPECT_FALSE(Exists("Meter"));
  TellHeld("big.files", Counted(files + 1) +
                            " downloads of one driver: all counted, all kept by a re-install, " +
                            "all removed with it");
}

// Each of the two driver folders below the one that holds `Data` counts as a level.
TEST_F(BigDrivers, AreCountedReinstalledAndRemovedWithAThousandLevelsOfFolders) {
  constexpr int kLevels = 1000;
  std::string deepest = "Data";
  for (int i = 1; i < kLevels; ++i) deepest += "/d";
  const std::string package = Pack("Meter_2.drv", {{.name = deepest + "/new.csv", .content = "1"}});
  EXPECT_TRUE(Install({package}));
  EXPECT_EQ(folder.ReadFile(InDrivers("Meter/" + deepest + "/new.csv")), "1");
  const DeepFolder deep(folder / InDrivers("Meter/Data"), kLevels - 1, "d", "own.csv");
  EXPECT_TRUE(Install({package}));
  EXPECT_TRUE(deep.IsWhole());
  EXPECT_THAT(Counts("Meter"), ElementsAre("2", "", ""));
  EXPECT_EQ(Remove("Meter"), 0);
  EXPECT_THAT(LastMessage(), HasSubstr("You have 2 downloads"));
  EXPECT_FALSE(Exists("Meter"));
}

TEST_F(BigDrivers, AreRemovedWithAsManyLevelsAsAWalkBearsAndNotTouchedWithMore) {
  Driver("Meter");
  const std::string name(7, 'l');
  {
    const DeepFolder deep(Driver("Meter"), 2000, name, "own.csv");
    EXPECT_TRUE(deep.IsWhole());
    Update();
    EXPECT_THAT(Counts("Meter"), ElementsAre("1", "", ""));
    EXPECT_EQ(Remove("Meter"), 0);
    EXPECT_FALSE(Exists("Meter"));
    fs::current_path(folder / kDataFolder);
  }
  const DeepFolder deep(Driver("Meter"), 2001, name, "own.csv");
  Update();
  EXPECT_THAT(Counts("Meter"), ElementsAre("", "", ""));
  EXPECT_EQ(Remove("Meter"), kPathFileAccessError);
  EXPECT_THAT(status.messages, IsEmpty()) << "nothing is asked";
  EXPECT_TRUE(deep.IsWhole());
  fs::current_path(folder / kDataFolder);
  EXPECT_TRUE(Install({Pack("Meter_2.drv")}));
  EXPECT_TRUE(deep.IsWhole());
  TellHeld("big.levels", "1,000 and 2,000 levels of folders, below a path of up to 16,000 bytes: " +
                             std::string("counted, kept by a re-install and removed; 2,001 "
                                         "levels: an error before anything is removed"));
}

TEST_F(BigDrivers, WithAHundredAndOneSubfoldersAreCountedAndWithMoreAnErrorKeepsThem) {
  for (int i = 0; i < 101; ++i) DriverFile("Meter/" + std::to_string(i) + "/own.csv");
  Update();
  EXPECT_THAT(Counts("Meter"), ElementsAre("101", "", ""));
  DriverFile("Meter/101/own.csv");
  Update();
  EXPECT_THAT(Counts("Meter"), ElementsAre("", "", ""));
  EXPECT_EQ(Remove("Meter"), kSubscriptOutOfRange);
  EXPECT_THAT(status.messages, IsEmpty()) << "nothing is asked";
  EXPECT_EQ(FilesIn("Meter"), 102);
  fs::current_path(folder / kDataFolder);
  fs::remove_all(folder / InDrivers("Meter/101"));
  EXPECT_EQ(Remove("Meter"), 0);
  EXPECT_FALSE(Exists("Meter"));
}

TEST_F(BigDrivers, AHundredAreListedReinstalledTogetherAndTheNextPackageIsAnError) {
  const auto name = [](int number) { return "Driver " + std::to_string(number); };
  for (int i = 1; i <= 102; ++i) {
    DriverFile(name(i) + "/driver.inf", "old");
    DriverFile(name(i) + "/Data/own.csv", name(i));
    if (i <= 100) Pack(name(i) + "_2.drv", {{.name = "Download.EXE", .content = "new"}});
  }
  Update();
  EXPECT_THAT(Names(), SizeIs(103)) << "there is no limit to how many are listed";
  ASSERT_EQ(CollectPackagesOfInstalledDrivers(*globals, window), 100);
  InstallOrder order;
  order.firstPackage = window.DriverFileList[1];
  EXPECT_FALSE(InstallDrivers(*globals, window, order));
  EXPECT_THAT(starting.started, SizeIs(100)) << "each tool records its version";
  for (int i = 1; i <= 102; ++i) {
    SCOPED_TRACE(name(i));
    const bool isNew = i <= 100;
    EXPECT_EQ(folder.ReadFile(InDrivers(name(i) + "/driver.inf")), isNew ? "[Driver]\r\n" : "old");
    EXPECT_EQ(folder.ReadFile(InDrivers(name(i) + "/Data/own.csv")), name(i));
    EXPECT_THAT(Counts(name(i)), ElementsAre("1", "", ""));
  }
  Pack(name(101) + "_2.drv");
  EXPECT_THROW(CollectPackagesOfInstalledDrivers(*globals, window), RuntimeError);
  EXPECT_EQ(Remove(name(102)), 0);
  EXPECT_THAT(Names(), SizeIs(102));
  TellHeld("big.drivers",
           "102 drivers listed with their counts; 100 re-installed in one go, each whole and with "
           "its data; a list of 101 packages and a folder with 102 subfolders: the error, nothing "
           "changed");
}

}  // namespace
}  // namespace tarvo::test
