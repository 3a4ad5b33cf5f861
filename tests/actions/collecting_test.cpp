#include "base/runtime_error.h"
#include "install_run.h"

namespace tarvo::test {
namespace {

class CollectingPackages : public Installing {
 protected:
  int Collect() { return CollectPackagesOfInstalledDrivers(*globals, window); }
};

TEST_F(CollectingPackages, TakesThoseOfInstalledDriversSortedByName) {
  Driver("Tide Gauge");
  Driver("meter");
  folder.WriteFile(InData("Tide Gauge_2.drv"));
  folder.WriteFile(InData("Meter_1.DRV"));
  folder.WriteFile(InData("Unknown_1.drv"));
  folder.WriteFile(InData("notes_1.txt"));
  EXPECT_EQ(Collect(), 2);
  EXPECT_EQ(window.DriverFileList[1], folder / InData("Meter_1.DRV"));
  EXPECT_EQ(window.DriverFileList[2], folder / InData("Tide Gauge_2.drv"));
}

TEST_F(CollectingPackages, LeavesOldEntriesBehindTheNewOnes) {
  window.DriverFileList[1] = "old 1";
  window.DriverFileList[2] = "old 2";
  Driver("Meter");
  folder.WriteFile(InData("Meter_1.drv"));
  Collect();
  EXPECT_EQ(window.DriverFileList[2], "old 2");
}

TEST_F(CollectingPackages, PassesOverAFileThatNamesNoDriver) {
  folder.WriteFile(InData("_1.drv"));
  folder.WriteFile(InData(".._1.drv"));
  EXPECT_EQ(Collect(), 0);
}

TEST_F(CollectingPackages, FailsForAFileWithoutAnUnderscore) {
  folder.WriteFile(InData("Meter.drv"));
  try {
    Collect();
    FAIL() << "no error was raised";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), kInvalidProcedureCall);
  }
}

TEST_F(CollectingPackages, FailsForMoreThanAHundred) {
  Driver("Meter");
  for (int i = 0; i < 100; ++i) folder.WriteFile(InData("Meter_" + std::to_string(i) + ".drv"));
  EXPECT_EQ(Collect(), 100);
  folder.WriteFile(InData("Meter_x.drv"));
  try {
    Collect();
    FAIL() << "no error was raised";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), kSubscriptOutOfRange);
  }
}

}  // namespace
}  // namespace tarvo::test
