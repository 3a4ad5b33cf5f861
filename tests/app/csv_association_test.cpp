#include "app/start/csv_association.h"

#include "support/made_dictionary.h"
#include "support/started_run.h"

namespace tarvo::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kQuestion =
    "CSV Viewer not associated: Set CSV Viewer as default association?";
constexpr const char* kMissing = "Tarvo: Association key is missing, please re-install to correct.";
constexpr const char* kIncorrect =
    "Tarvo: Association key is incorrect, please re-install to correct.";

class TheCsvViewer : public StartedRun {
 protected:
  TheCsvViewer() { platform.registry = MemoryRegistry(); }

  void SetClass(const std::string& name) { platform.registry.SetString(".csv", name); }
  void SetCommand(const std::string& name, const std::string& command) {
    platform.registry.SetString(name + "\\shell\\open\\command", command);
  }

  // What a start shows.
  std::vector<std::string> Shown(Answer answer = Answer::kNo) {
    frontEnd.messages.clear();
    frontEnd.answer = answer;
    Start();
    frontEnd.Unload(Window());
    return frontEnd.messages;
  }
};

TEST_F(TheCsvViewer, IsOfferedWhereNothingOpensCsvFilesAndYesAssociatesItsClass) {
  EXPECT_THAT(Shown(Answer::kYes), ElementsAre(kQuestion));
  EXPECT_THAT(frontEnd.buttonsShown, ElementsAre(MessageButtons::kYesNo));
  EXPECT_THAT(frontEnd.icons, ElementsAre(MessageIcon::kNone));
  EXPECT_EQ(platform.registry.String(".csv"), std::string("csvFile\0", 8));
  EXPECT_EQ(Stored("Tarvo_Association_Asked"), "absent") << "a Yes is not recorded";
}

TEST_F(TheCsvViewer, IsOfferedWhereAnotherProgramOpensCsvFiles) {
  SetClass("spreadsheet");
  SetCommand("spreadsheet", "calc %f");
  EXPECT_THAT(Shown(), ElementsAre(kQuestion));
  EXPECT_EQ(platform.registry.String(".csv"), "spreadsheet");
}

TEST_F(TheCsvViewer, IsOfferedWhereTheOtherClassHasNoCommand) {
  SetClass("spreadsheet");
  EXPECT_THAT(Shown(), ElementsAre(kQuestion));
}

TEST_F(TheCsvViewer, IsNeverOfferedAgainAfterNo) {
  EXPECT_THAT(Shown(Answer::kNo), ElementsAre(kQuestion));
  EXPECT_EQ(Stored("Tarvo_Association_Asked"), "Yes");
  EXPECT_FALSE(platform.registry.Has(".csv"));
  EXPECT_THAT(Shown(), IsEmpty());
}

TEST_F(TheCsvViewer, IsInPlaceWhenTheCommandNamesItInAnyLetterCase) {
  SetClass("csvFile");
  SetCommand("csvFile", "C:\\Tools\\CSVVIEW.EXE \"%1\"");
  EXPECT_THAT(Shown(), IsEmpty());
}

TEST_F(TheCsvViewer, IsInPlaceWhenAnotherClassHasItsCommand) {
  SetClass("table");
  SetCommand("table", "/opt/csvviewer/bin/start %f");
  EXPECT_THAT(Shown(), IsEmpty());
}

TEST_F(TheCsvViewer, IsToBeReinstalledWhenItsClassHasNoCommand) {
  SetClass("csvFile");
  EXPECT_THAT(Shown(), ElementsAre(kMissing));
  EXPECT_THAT(frontEnd.buttonsShown, ElementsAre(MessageButtons::kOk));
  EXPECT_THAT(frontEnd.icons, ElementsAre(MessageIcon::kNone));
}

TEST_F(TheCsvViewer, IsToBeReinstalledWhenItsClassHasAnotherCommand) {
  SetClass("csvFile");
  SetCommand("csvFile", "calc %f");
  EXPECT_THAT(Shown(), ElementsAre(kIncorrect));
}

// Its class counts only as it is spelt; another spelling is some other program's.
TEST_F(TheCsvViewer, IsOfferedWhereAClassDiffersInLetterCase) {
  SetClass("CSVFILE");
  EXPECT_THAT(Shown(), ElementsAre(kQuestion));
}

TEST_F(TheCsvViewer, IsReportedMissingAtEachLaterStartAfterYesWithoutItsCommand) {
  EXPECT_THAT(Shown(Answer::kYes), ElementsAre(kQuestion));
  EXPECT_THAT(Shown(), ElementsAre(kMissing));
  EXPECT_THAT(Shown(), ElementsAre(kMissing));
}

TEST_F(TheCsvViewer, IsOnlyLookedForWhileTheSettingIsExactlyNo) {
  for (const char* asked : {"Yes", "no", ""}) {
    Store("Tarvo_Association_Asked", asked);
    EXPECT_THAT(Shown(), IsEmpty()) << asked;
  }
  Store("tarvo_association_asked", "No");
  EXPECT_THAT(Shown(), ElementsAre(kQuestion));
}

TEST_F(TheCsvViewer, LosesNothingWhenTheAssociationCannotBeWritten) {
  platform.registry.isReadOnly = true;
  EXPECT_THAT(Shown(Answer::kYes), ElementsAre(kQuestion));
  EXPECT_FALSE(platform.registry.Has(".csv"));
  EXPECT_THAT(Shown(Answer::kYes), ElementsAre(kQuestion));
}

TEST_F(TheCsvViewer, IsOfferedWhileTheMainWindowIsOnTheScreenAfterAddingDrivers) {
  int loaded = 0;
  frontEnd.atMessage = [&] { loaded = static_cast<int>(frontEnd.LoadedForms().size()); };
  frontEnd.answer = Answer::kNo;
  Start("/a");
  EXPECT_THAT(frontEnd.messages, ElementsAre(kQuestion));
  EXPECT_EQ(loaded, 1) << "the splash window is gone";
}

TEST_F(TheCsvViewer, IsOfferedInTheLanguageOfTheDictionary) {
  const auto phrase = [](const std::string& shown) { return shown.substr(shown.find(": ") + 2); };
  const auto title = [](const std::string& shown) { return shown.substr(0, shown.find(": ")); };
  MakeDictionary(folder,
                 PoText({{title(kQuestion), "CSV-Anzeige"},
                         {phrase(kQuestion), "Zuordnen?"},
                         {phrase(kMissing), "Fehlt."},
                         {phrase(kIncorrect), "Falsch."}}),
                 {}, "start/TARVO.DIC");
  EXPECT_THAT(Shown(), ElementsAre("CSV-Anzeige: Zuordnen?"));
  Store("Tarvo_Association_Asked", "No");
  const auto startAgain = [this] { std::filesystem::current_path(folder / "start"); };
  startAgain();
  SetClass("csvFile");
  EXPECT_THAT(Shown(), ElementsAre("Tarvo: Fehlt."));
  startAgain();
  SetCommand("csvFile", "calc %f");
  EXPECT_THAT(Shown(), ElementsAre("Tarvo: Falsch."));
}

TEST_F(TheCsvViewer, IsNotOfferedInASilentRefresh) {
  Start("/r");
  EXPECT_THAT(frontEnd.messages, IsEmpty());
}

}  // namespace
}  // namespace tarvo::test
