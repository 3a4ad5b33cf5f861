#include "base/runtime_error.h"
#include "support/made_dictionary.h"
#include "support/working_run.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* kSure = "Remove Driver: Are you sure?";

std::string QuestionAbout(int downloads) {
  return "Remove Driver: You have " + std::to_string(downloads) +
         " downloads for this driver.\rRemoving the driver will also erase these files.\r"
         "Are you sure?";
}

class RemovingADriver : public WorkingRun {
 protected:
  RemovingADriver() { frontEnd.answer = Answer::kYes; }

  void Remove(const std::string& driver) {
    Click(driver);
    Window().mnuFileDelete_Click();
  }

  std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (int i = 1; i < Window().lvListView.Count(); ++i) {
      names.push_back(Window().lvListView.ItemAt(i).Text);
    }
    return names;
  }

  std::string OutsideFile() const { return folder.WriteFile("outside/kept", "kept"); }
};

TEST_F(RemovingADriver, AsksOnceWhenThereAreNoDownloads) {
  DriverFile("Meter/driver.inf");
  Driver("Meter/Data");
  Driver("Tide Gauge");
  Start();
  Remove("Meter");
  EXPECT_THAT(frontEnd.messages, ElementsAre(kSure));
  EXPECT_THAT(frontEnd.buttonsShown, Each(MessageButtons::kYesNo));
  EXPECT_THAT(frontEnd.icons, Each(MessageIcon::kQuestion));
  EXPECT_THAT(frontEnd.pointersAtMessages, Each(kDefaultPointer));
  EXPECT_FALSE(Exists(DriverPath("Meter")));
  EXPECT_THAT(Names(), ElementsAre("Tide Gauge"));
  EXPECT_EQ(platform.CurrentFolder(), folder / kDataFolder);
}

TEST_F(RemovingADriver, AsksAgainWithTheNumberOfDownloadsOfAllThreeKinds) {
  DriverFile("Meter/a.csv");
  DriverFile("Meter/Data/b.ASC");
  DriverFile("Meter/Data/deep/c.txt");
  DriverFile("Meter/Data/d.hvd");
  Start();
  Remove("Meter");
  EXPECT_THAT(frontEnd.messages, ElementsAre(kSure, QuestionAbout(3)));
  EXPECT_THAT(frontEnd.buttonsShown, ElementsAre(MessageButtons::kYesNo, MessageButtons::kYesNo));
  EXPECT_THAT(frontEnd.icons, Each(MessageIcon::kQuestion));
  EXPECT_FALSE(Exists(DriverPath("Meter")));
}

// What is hidden is not counted anywhere, and goes all the same.
TEST_F(RemovingADriver, AsksOnlyOnceAboutHiddenDownloads) {
  DriverFile("Meter/.a.csv");
  DriverFile("Meter/.hidden/b.csv");
  Start();
  Remove("Meter");
  EXPECT_THAT(frontEnd.messages, ElementsAre(kSure));
  EXPECT_FALSE(Exists(DriverPath("Meter")));
}

// There is no singular form.
TEST_F(RemovingADriver, AsksInThePluralAboutOneDownload) {
  DriverFile("Meter/a.csv");
  Start();
  Remove("Meter");
  EXPECT_THAT(frontEnd.messages, ElementsAre(kSure, QuestionAbout(1)));
}

TEST_F(RemovingADriver, ChangesNothingAfterNoToEitherQuestion) {
  DriverFile("Meter/Data/a.csv", "data");
  DriverFile("Meter/locked");
  fs::permissions(DriverPath("Meter/locked"), fs::perms(0444));
  Start();
  frontEnd.answers = {Answer::kNo};
  Remove("Meter");
  EXPECT_THAT(frontEnd.messages, SizeIs(1));
  frontEnd.answers = {Answer::kYes, Answer::kNo};
  Remove("Meter");
  EXPECT_THAT(frontEnd.messages, SizeIs(3));
  EXPECT_EQ(folder.ReadFile(InDrivers("Meter/Data/a.csv")), "data");
  EXPECT_EQ(fs::status(DriverPath("Meter/locked")).permissions(), fs::perms(0444));
  EXPECT_EQ(Window().lvListView.SelectedItem(), &Item("Meter")) << "the list is not rebuilt";
}

TEST_F(RemovingADriver, AsksInTheLanguageOfTheDictionary) {
  MakeDictionary(
      folder,
      PoText({{"Are you sure?", "Sicher?"},
              {"Remove Driver", "Treiber entfernen"},
              {"You have %1 downloads for this driver.", "%1 Downloads."},
              {"Removing the driver will also erase these files.", "Auch diese gehen."}}),
      {}, "start/TARVO.DIC");
  DriverFile("Meter/a.csv");
  DriverFile("Meter/b.csv");
  Start();
  Remove("Meter");
  EXPECT_THAT(frontEnd.messages,
              ElementsAre("Treiber entfernen: Sicher?",
                          "Treiber entfernen: 2 Downloads.\rAuch diese gehen.\rSicher?"));
}

TEST_F(RemovingADriver, DoesNothingOnTheAddItem) {
  Start();
  Remove("Add");
  EXPECT_THAT(frontEnd.messages, IsEmpty());
}

TEST_F(RemovingADriver, RemovesReadOnlyAndHiddenFilesOfTheDriverFolder) {
  DriverFile("Meter/locked");
  DriverFile("Meter/.hidden");
  DriverFile("Meter/.both");
  for (const char* name : {"Meter/locked", "Meter/.both"}) {
    fs::permissions(DriverPath(name), fs::perms(0444));
  }
  Start();
  Remove("Meter");
  EXPECT_FALSE(Exists(DriverPath("Meter")));
}

// Only the driver's own folder has its attributes reset: what is protected below it stays, and with
// it the folder, which stays listed.
TEST_F(RemovingADriver, LeavesReadOnlyFilesBelowTheDriverFolderAndKeepsItListed) {
  DriverFile("Meter/Data/locked.csv", "kept");
  fs::permissions(DriverPath("Meter/Data/locked.csv"), fs::perms(0444));
  Start();
  Remove("Meter");
  EXPECT_EQ(folder.ReadFile(InDrivers("Meter/Data/locked.csv")), "kept");
  EXPECT_THAT(Names(), ElementsAre("Meter"));
  EXPECT_EQ(Window().lvListView.SelectedItem(), nullptr) << "the list is rebuilt";
  EXPECT_THAT(frontEnd.messages, SizeIs(2)) << "nothing more is shown";
}

TEST_F(RemovingADriver, FollowsNoLinkNeitherForContentsNorForAttributes) {
  const std::string outside = OutsideFile();
  fs::permissions(outside, fs::perms(0444));
  Driver("Meter/Data");
  fs::create_symlink(outside, DriverPath("Meter/file"));
  fs::create_symlink(folder / "outside", DriverPath("Meter/folder"));
  fs::create_symlink("nowhere", DriverPath("Meter/broken"));
  fs::create_symlink(folder / "outside", DriverPath("Meter/Data/folder"));
  Start();
  Remove("Meter");
  EXPECT_FALSE(Exists(DriverPath("Meter")));
  EXPECT_EQ(folder.ReadFile("outside/kept"), "kept");
  EXPECT_EQ(fs::status(outside).permissions(), fs::perms(0444));
}

// A driver that is a link is not counted, since only the link goes.
TEST_F(RemovingADriver, RemovesOnlyTheLinkWhenTheDriverIsOne) {
  folder.WriteFile("outside/a.csv", "kept");
  fs::permissions(folder / "outside/a.csv", fs::perms(0444));
  fs::create_symlink(folder / "outside", DriverPath("Meter"));
  Start();
  Remove("Meter");
  EXPECT_THAT(frontEnd.messages, ElementsAre(kSure));
  EXPECT_FALSE(Exists(DriverPath("Meter")));
  EXPECT_EQ(folder.ReadFile("outside/a.csv"), "kept");
  EXPECT_EQ(fs::status(folder / "outside/a.csv").permissions(), fs::perms(0444));
}

TEST_F(RemovingADriver, FindsItWhereDriversIsALink) {
  folder.WriteFile("elsewhere/Meter/a.csv");
  folder.WriteFile("elsewhere/Tide Gauge/kept");
  fs::remove(folder / InData("Drivers"));
  fs::create_directory_symlink(folder / "elsewhere", folder / InData("Drivers"));
  Start();
  Remove("Meter");
  EXPECT_THAT(frontEnd.messages, ElementsAre(kSure, QuestionAbout(1)));
  EXPECT_FALSE(Exists(folder / "elsewhere/Meter"));
  EXPECT_THAT(Names(), ElementsAre("Tide Gauge"));
  EXPECT_EQ(platform.CurrentFolder(), folder / kDataFolder);
}

TEST_F(RemovingADriver, FailsBeforeAnyQuestionWhenTheDownloadsCannotBeCounted) {
  for (int i = 0; i < 102; ++i) Driver("Meter/" + std::to_string(i));
  Start();
  EXPECT_EQ(ErrorOf([&] { Remove("Meter"); }), kSubscriptOutOfRange);
  EXPECT_THAT(frontEnd.messages, IsEmpty());
  EXPECT_TRUE(Exists(DriverPath("Meter/0")));
}

TEST_F(RemovingADriver, ListsWhatRemainsWhenAFolderBelowCannotBeRemoved) {
  // Hidden folders are not counted before the question, but they are removed.
  for (int i = 0; i < 102; ++i) Driver("Meter/Data/." + std::to_string(i));
  DriverFile("Meter/driver.inf", "kept");
  Start();
  Remove("Meter");
  EXPECT_TRUE(Exists(DriverPath("Meter/driver.inf"))) << "the whole removal is abandoned";
  EXPECT_THAT(Names(), ElementsAre("Meter"));
}

TEST_F(RemovingADriver, LeavesTheVersionRecordsInTheStore) {
  Driver("Meter");
  Start();
  Store("tarvo.versions_Meter_DOWNLOAD", "1.5");
  Remove("Meter");
  EXPECT_EQ(Stored("tarvo.versions_Meter_DOWNLOAD"), "1.5");
  Driver("Meter");
  Window().mnuViewRefresh_Click();
  EXPECT_EQ(Item("Meter").SubItems[3], "1.5");
}

TEST_F(RemovingADriver, FailsForAFileThatStandsForADriverBeforeAnyQuestion) {
  DriverFile("stray");
  Start();
  EXPECT_EQ(ErrorOf([&] { Remove("stray"); }), kPathNotFound);
  EXPECT_THAT(frontEnd.messages, IsEmpty());
  EXPECT_TRUE(Exists(DriverPath("stray")));
}

TEST_F(RemovingADriver, ForgetsItsProgramSettingsAlsoWhenTheFolderStays) {
  DriverFile("Meter/Data/locked.csv");
  fs::permissions(DriverPath("Meter/Data/locked.csv"), fs::perms(0444));
  Start();
  Remove("Meter");
  EXPECT_TRUE(Exists(DriverPath("Meter")));
  EXPECT_THAT(platform.deletedSettings, ElementsAre("tarvo.versions/Meter", "Meter/"));
}

TEST_F(RemovingADriver, ListsWhatRemainsWhenItsProgramSettingsCannotBeDeleted) {
  Driver("Meter");
  Driver("Tide Gauge");
  Start();
  platform.settingsError = RuntimeError(kInvalidProcedureCall);
  Remove("Meter");
  EXPECT_THAT(platform.deletedSettings, SizeIs(1)) << "the second step is skipped";
  EXPECT_THAT(frontEnd.messages, ElementsAre(kSure));
  EXPECT_THAT(Names(), ElementsAre("Tide Gauge"));
}

// A file whose attributes cannot be set does not keep the others read-only.
TEST_F(RemovingADriver, GoesOnWhenTheAttributesOfOneFileCannotBeSet) {
  DriverFile("Meter/refused");
  DriverFile("Meter/locked");
  fs::permissions(DriverPath("Meter/locked"), fs::perms(0444));
  platform.refusesAttributesOf = DriverPath("Meter/refused");
  Start();
  Remove("Meter");
  EXPECT_FALSE(Exists(DriverPath("Meter")));
}

TEST_F(RemovingADriver, TakesNamesWithBlanksAndQuotesAsTheyAre) {
  const std::string name = "Tide 'Gauge' \"2\" * ?";
  DriverFile(name + "/a b.csv");
  DriverFile("Tide/kept");
  Start();
  Remove(name);
  EXPECT_FALSE(Exists(DriverPath(name)));
  EXPECT_TRUE(Exists(DriverPath("Tide/kept")));
}

TEST_F(RemovingADriver, ShowsThePlaceholderForRenaming) {
  Driver("Meter");
  Start();
  Click("Meter");
  Window().mnuFileRename_Click();
  EXPECT_THAT(frontEnd.messages, ElementsAre("Tarvo: Rename Code goes here!"));
  EXPECT_THAT(frontEnd.buttonsShown, ElementsAre(MessageButtons::kOk));
}

}  // namespace
}  // namespace tarvo::test
