#include "base/runtime_error.h"
#include "support/made_dictionary.h"
#include "support/working_run.h"

namespace tarvo::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr int kKeyF1 = 112;
constexpr const char* kNoHelp =
    "Tarvo: Unable to display Help Contents. There is no Help associated with this application.";

class Help : public WorkingRun {
 protected:
  Help() {
    Store("Tarvo_ProgramPath", folder.MakeFolder("own"));
    Store("Lumet_ProgramPath", folder.MakeFolder("sibling"));
  }

  std::string HelpFile(const std::string& content = "<!DOCTYPE html>") const {
    return folder.WriteFile("own/TARVO.HLP", content);
  }
  std::string Viewer() const { return folder.WriteProgram("sibling/winhlp32.exe", ""); }
  void Contents() { Window().mnuHelpContents.Click(); }
  void Search() { Window().mnuHelpSearch.Click(); }
};

TEST_F(Help, OpensTheRegisteredFileAtItsContentsAndAtTheSearch) {
  const std::string file = HelpFile();
  Start();
  Contents();
  Search();
  ASSERT_THAT(frontEnd.helpShown, SizeIs(2));
  EXPECT_EQ(frontEnd.helpShown[0].file, file);
  EXPECT_EQ(frontEnd.helpShown[0].command, HelpCommand::kContents);
  EXPECT_EQ(frontEnd.helpShown[1].file, file);
  EXPECT_EQ(frontEnd.helpShown[1].command, HelpCommand::kPartialKey);
  EXPECT_EQ(frontEnd.helpShown[1].key, "");
  EXPECT_THAT(frontEnd.messages, IsEmpty());
}

TEST_F(Help, IsFoundInAnyLetterCase) {
  folder.WriteFile("own/tarvo.hlp");
  Start();
  Contents();
  ASSERT_THAT(frontEnd.helpShown, SizeIs(1));
  EXPECT_EQ(frontEnd.helpShown[0].file, folder / "own/tarvo.hlp");
}

TEST_F(Help, IsMissingForBothCommandsWhereNoFileIsRegistered) {
  Start();
  Contents();
  Search();
  EXPECT_THAT(frontEnd.messages, ElementsAre(kNoHelp, kNoHelp));
  EXPECT_THAT(frontEnd.icons, ElementsAre(MessageIcon::kInformation, MessageIcon::kInformation));
  EXPECT_THAT(frontEnd.buttonsShown, ElementsAre(MessageButtons::kOk, MessageButtons::kOk));
}

// The file is registered when the program starts.
TEST_F(Help, IsStillMissingWhenTheFileComesLater) {
  Start();
  HelpFile();
  Contents();
  EXPECT_THAT(frontEnd.messages, ElementsAre(kNoHelp));
}

TEST_F(Help, ShowsTheDescriptionOfAFailure) {
  const std::string file = HelpFile();
  Start();
  frontEnd.helpError = RuntimeError(kInvalidFileFormat, "It is no help file");
  Search();
  std::filesystem::remove(file);
  Contents();
  ASSERT_THAT(frontEnd.messages, SizeIs(2));
  EXPECT_EQ(frontEnd.messages[0], "Tarvo: It is no help file");
  EXPECT_THAT(frontEnd.messages[1], ::testing::StartsWith("Tarvo: File not found"));
  EXPECT_THAT(frontEnd.icons, ElementsAre(MessageIcon::kNone, MessageIcon::kNone));
  EXPECT_THAT(frontEnd.buttonsShown, ElementsAre(MessageButtons::kOk, MessageButtons::kOk));
}

TEST_F(Help, OfTheClassicBinaryFormatGoesToTheSystemsViewer) {
  const std::string file = HelpFile(std::string("\x3F\x5F\x03\x00 and more", 13));
  Start();
  Contents();
  Search();
  EXPECT_THAT(platform.classicHelp, ElementsAre(file + " 3 \"\"", file + " 261 \"\""));
  EXPECT_THAT(frontEnd.helpShown, IsEmpty());
  platform.desktopError = RuntimeError(kFileNotFound, "There is no viewer");
  Contents();
  EXPECT_THAT(frontEnd.messages, ElementsAre("Tarvo: There is no viewer"));
}

TEST_F(Help, StartsTheViewerForTheContentsOnlyWithTheSetting) {
  const std::string file = HelpFile();
  const std::string viewer = Viewer();
  Store("Vista", "yes");
  Start();
  Contents();
  EXPECT_THAT(platform.started, ElementsAre(viewer + " " + file));
  EXPECT_THAT(frontEnd.helpShown, IsEmpty());
  Search();
  EXPECT_THAT(platform.started, SizeIs(1));
  EXPECT_THAT(frontEnd.helpShown, SizeIs(1));
}

TEST_F(Help, DoesNotStartTheViewerForAnyOtherSpellingOfTheSetting) {
  HelpFile();
  Viewer();
  Start();
  for (const char* setting : {"Yes", "YES", "yes ", "", "no"}) {
    Store("Vista", setting);
    Contents();
    EXPECT_THAT(platform.started, IsEmpty()) << setting;
  }
  EXPECT_THAT(frontEnd.helpShown, SizeIs(5));
}

TEST_F(Help, SaysThatItCouldNotBeLoadedWhenTheViewerIsMissing) {
  Store("Vista", "yes");
  Start();
  Contents();
  EXPECT_THAT(frontEnd.messages, ElementsAre("Tarvo: Help file could not be loaded."));
  EXPECT_THAT(frontEnd.icons, ElementsAre(MessageIcon::kExclamation));
  EXPECT_THAT(frontEnd.helpShown, IsEmpty());
}

TEST_F(Help, ComesWithF1OnlyWithTheExactSetting) {
  HelpFile();
  const std::string viewer = Viewer();
  Start();
  const auto press = [&](int key) {
    Window().Form_KeyDown(key);
    return key;
  };
  EXPECT_EQ(press(kKeyF1), kKeyF1);
  Store("Vista", "Yes");
  EXPECT_EQ(press(kKeyF1), kKeyF1);
  EXPECT_THAT(platform.started, IsEmpty());
  Store("vista", "yes");
  EXPECT_EQ(press(kKeyF1 + 1), kKeyF1 + 1);
  EXPECT_THAT(platform.started, IsEmpty());
  EXPECT_EQ(press(kKeyF1), 0);
  EXPECT_THAT(platform.started, SizeIs(1));
}

TEST_F(Help, IsShownInTheLanguageOfTheDictionary) {
  HelpFile();
  MakeDictionary(folder, PoText({{"&Help", "&Hilfe"}}), {}, "start/TARVO.DIC");
  Start();
  Contents();
  ASSERT_THAT(frontEnd.helpShown, SizeIs(1));
  EXPECT_EQ(frontEnd.helpShown[0].language, run->RunGlobals().translator.Language());
}

TEST_F(Help, SpeaksTheLanguageOfTheDictionaryWhereItCannotBeShown) {
  MakeDictionary(folder,
                 PoText({{"Help file could not be loaded.", "Hilfe nicht geladen."},
                         {"Unable to display Help Contents. There is no Help associated with this "
                          "application.",
                          "Keine Hilfe."}}),
                 {}, "start/TARVO.DIC");
  Start();
  Contents();
  Store("Vista", "yes");
  Contents();
  EXPECT_THAT(frontEnd.messages, ElementsAre("Tarvo: Keine Hilfe.", "Tarvo: Hilfe nicht geladen."));
}

}  // namespace
}  // namespace tarvo::test
