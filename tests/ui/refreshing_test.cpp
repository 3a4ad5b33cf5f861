#include "adding_run.h"

namespace tarvo::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Refreshing : public AddingDrivers {};

TEST_F(Refreshing, ReinstallsThePackagesOfInstalledDriversWithoutAsking) {
  Driver("Meter");
  Package("Meter_1.drv");
  Package("Unknown_1.drv");
  EXPECT_EQ(Start("/R"), AfterStart::kEnd);
  EXPECT_TRUE(std::filesystem::exists(folder / InDrivers("Meter/driver.inf")));
  EXPECT_THAT(Installed(), ElementsAre("Meter"));
  EXPECT_EQ(user.choosersShown, 0);
  EXPECT_FALSE(Window().Refreshing);
  EXPECT_FALSE(Window().Visible);
  EXPECT_EQ(user.MousePointer(), kDefaultPointer);
}

TEST_F(Refreshing, ShowsTheMessageOfAnInvalidPackageWithoutAnyWindow) {
  Driver("Meter");
  folder.WriteFile(InData("Meter_1.drv"), "damaged");
  Start("/r");
  EXPECT_THAT(user.messages, ElementsAre("Tarvo: Invalid Driver file"));
}

TEST_F(Refreshing, EndsTheProgramForAPackageWithoutAnUnderscore) {
  folder.WriteFile(InData("Meter.drv"));
  EXPECT_THROW(Start("/r"), RuntimeError);
}

TEST_F(Refreshing, IsFollowedByAddingInTheWindowThatStartsWithIt) {
  Driver("Meter");
  Package("Meter_1.drv");
  Package("New_1.drv");
  bool splashIsLoaded = true;
  user.choose = [&](frmStdDrivers& chooser) {
    splashIsLoaded = std::any_of(user.LoadedForms().begin(), user.LoadedForms().end(),
                                 [](const Form* form) { return form->Name == "frmSplash"; });
    Choose(chooser, {1});
  };
  EXPECT_EQ(Start("/A"), AfterStart::kEventLoop);
  EXPECT_FALSE(splashIsLoaded);
  EXPECT_THAT(Installed(), ElementsAre("Meter", "New"));
  EXPECT_THAT(user.LoadedForms(), ElementsAre(&Window()));
}

TEST_F(Refreshing, EndsWhenTheWindowGoesDuringTheStartThatAdds) {
  Package("New_1.drv");
  user.choose = [this](frmStdDrivers&) { user.Unload(Window()); };
  EXPECT_EQ(Start("/a"), AfterStart::kEnd);
  EXPECT_FALSE(Window().Visible);
}

// Entries that an earlier use has left stand behind the newly collected ones, and the list ends at
// the first empty entry only.
TEST_F(Refreshing, InstallsWhatAnEarlierUseLeftBehindTheCollectedPackages) {
  Package("A_1.drv");
  Package("B_1.drv");
  Package("C_1.drv");
  Start();
  user.choose = [](frmStdDrivers& chooser) { Choose(chooser, {0, 1, 2}); };
  ActivateAddItem();
  for (const char* driver : {"A", "C"}) std::filesystem::remove_all(folder / InDrivers(driver));
  ASSERT_THAT(Installed(), ElementsAre("B"));
  Window().RefreshDrivers();
  EXPECT_EQ(Packages()[1], folder / InData("B_1.drv"));
  EXPECT_EQ(Packages()[2], folder / InData("B_1.drv"));
  EXPECT_EQ(Packages()[3], folder / InData("C_1.drv"));
  EXPECT_THAT(Installed(), ElementsAre("B", "C")) << "B twice, and C, which is not installed";
  EXPECT_EQ(user.choosersShown, 1);
  EXPECT_FALSE(Window().Refreshing);
}

TEST_F(Refreshing, InstallsNothingWhenNothingIsCollectedWhateverAnEarlierUseLeft) {
  Package("A_1.drv");
  Start();
  user.choose = [](frmStdDrivers& chooser) { Choose(chooser, {0}); };
  ActivateAddItem();
  std::filesystem::remove_all(folder / InDrivers("A"));
  Window().RefreshDrivers();
  EXPECT_THAT(Installed(), IsEmpty());
  EXPECT_EQ(user.MousePointer(), kDefaultPointer);
}

TEST_F(Refreshing, EndsTheStartThatAddsForAPackageWithoutAnUnderscore) {
  folder.WriteFile(InData("Meter.drv"));
  try {
    Start("/a");
    FAIL() << "no error was raised";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), kInvalidProcedureCall);
  }
  EXPECT_EQ(user.choosersShown, 0);
}

TEST_F(Refreshing, GoesOnToAddDriversAfterAnInvalidPackage) {
  Driver("Meter");
  folder.WriteFile(InData("Meter_1.drv"), "damaged");
  EXPECT_EQ(Start("/a"), AfterStart::kEventLoop);
  EXPECT_THAT(user.messages, Contains("Tarvo: Invalid Driver file"));
  EXPECT_EQ(user.choosersShown, 1);
  EXPECT_FALSE(Window().Refreshing);
  EXPECT_EQ(Window().lvListView.SelectedItem(), &Window().lvListView.ItemAt(0));
}

}  // namespace
}  // namespace tarvo::test
