#include "app/globals/globals.h"

#include "app/globals/data_folder.h"
#include "base/runtime_error.h"
#include "support/made_dictionary.h"
#include "support/program_run.h"

namespace tarvo::test {
namespace {

class TheProgramPaths : public ProgramRun {
 protected:
  TheProgramPaths() : globals(platform, frontEnd, "") { globals.OpenSettings(); }

  std::string LumetPathOf(std::string_view stored) {
    globals.LocalRegistry().SaveSetting("Lumet_ProgramPath", stored);
    globals.ReadProgramPaths();
    return globals.LumetProgramPath;
  }

  Globals globals;
};

TEST_F(TheProgramPaths, AreTheProgramsOwnFolderByDefaultAndAreNotWrittenBack) {
  globals.ReadProgramPaths();
  EXPECT_EQ(globals.LumetProgramPath, platform.ProgramFolder() + "/");
  EXPECT_EQ(globals.TarvoProgramPath, platform.ProgramFolder() + "/");
  EXPECT_TRUE(globals.LocalRegistry().EnumEntries().empty());
}

TEST_F(TheProgramPaths, GetASeparatorAtTheirEnd) {
  EXPECT_EQ(LumetPathOf("/opt/tools"), "/opt/tools/");
}

TEST_F(TheProgramPaths, KeepTheSeparatorThatTheyHave) {
  EXPECT_EQ(LumetPathOf("/opt/tools/"), "/opt/tools/");
}

TEST_F(TheProgramPaths, AreStoredUnderKeysOfTheirOwn) {
  globals.LocalRegistry().SaveSetting("Tarvo_ProgramPath", "/opt/tarvo");
  EXPECT_EQ(LumetPathOf("/opt/lumet"), "/opt/lumet/");
  EXPECT_EQ(globals.TarvoProgramPath, "/opt/tarvo/");
}

TEST_F(TheProgramPaths, BecomeTheSeparatorAloneWhenStoredEmpty) { EXPECT_EQ(LumetPathOf(""), "/"); }

class TheDataFolder : public ProgramRun {
 protected:
  TheDataFolder() : globals(platform, frontEnd, "") {
    globals.OpenSettings();
    globals.translator.TranslateWindow(window);
  }

  class AnyWindow : public Form {
   public:
    AnyWindow() : Form("any", "") {}
  };
  AnyWindow window;
  Globals globals;
};

TEST_F(TheDataFolder, IsMadeBelowTheCommonDocuments) {
  std::filesystem::current_path(folder.Path());
  std::filesystem::remove_all(folder / "documents");
  folder.MakeFolder("documents");
  EXPECT_EQ(GetDataDirectory(globals), folder / kDataFolder + "/");
  EXPECT_TRUE(std::filesystem::is_directory(folder / kDataFolder));
}

TEST_F(TheDataFolder, IsMadeWithTheDocumentsFolderThatANewAccountLacks) {
  platform.specialFolders = {{kPersonalDocuments, folder / "home/Documents"}};
  folder.MakeFolder("home");
  EXPECT_EQ(GetDataDirectory(globals), folder / "home/Documents/Halvex Limited/Halvex Tarvo/");
  EXPECT_TRUE(std::filesystem::is_directory(folder / "home/Documents/Halvex Limited/Halvex Tarvo"));
}

TEST_F(TheDataFolder, UsesItsFoldersInAnyLetterCase) {
  platform.specialFolders = {{kCommonDocuments, folder.MakeFolder("common")}};
  folder.MakeFolder("common/HALVEX LIMITED/halvex tarvo");
  EXPECT_EQ(GetDataDirectory(globals), folder / "common/HALVEX LIMITED/halvex tarvo/");
}

TEST_F(TheDataFolder, IsBelowTheUsersDocumentsWithoutCommonOnes) {
  platform.specialFolders = {{kPersonalDocuments, folder.MakeFolder("mine")}};
  EXPECT_EQ(GetDataDirectory(globals), folder / "mine/Halvex Limited/Halvex Tarvo/");
}

TEST_F(TheDataFolder, IsBelowTheUsersDocumentsWhenTheCommonOnesAreARoot) {
  platform.specialFolders = {{kCommonDocuments, "/"},
                             {kPersonalDocuments, folder.MakeFolder("mine")}};
  EXPECT_EQ(GetDataDirectory(globals), folder / "mine/Halvex Limited/Halvex Tarvo/");
}

// Nothing may be made in the machine's real root.
class NothingCanBeMade : public RootedPlatform {
 public:
  using RootedPlatform::RootedPlatform;
  void MakeFolder(std::string_view) override { throw RuntimeError(kPermissionDenied); }
};

TEST_F(TheDataFolder, IsBelowTheRootWhenBothLookUpsFailAndNothingCanBeMade) {
  NothingCanBeMade bare(folder.Path());
  Globals other(bare, frontEnd, "");
  EXPECT_EQ(GetDataDirectory(other), "/Halvex Limited/Halvex Tarvo/");
}

TEST_F(TheDataFolder, IsTheStoredSettingAsItStandsThoughItDoesNotExist) {
  globals.LocalRegistry().SaveSetting("Tarvo_Settings_Directory", "/no/where");
  EXPECT_EQ(GetDataDirectory(globals), "/no/where");
  EXPECT_FALSE(std::filesystem::exists("/no"));
}

// The title is translated when the dictionary is loaded and once more by the first window.
TEST_F(TheDataFolder, IsReadUnderTheTitleOfTheMomentNotUnderThatOfTheOtherKeys) {
  std::filesystem::current_path(folder.Path());
  MakeDictionary(folder, PoText({{"Tarvo", "First"}, {"First", "Second"}}));
  Globals other(platform, frontEnd, "");
  other.OpenSettings();
  other.translator.LoadDictionary("TARVO.DIC");
  other.translator.TranslateWindow(window);
  ASSERT_EQ(other.translator.AppTitle(), "First");
  other.LocalRegistry().SaveSetting("First_settings_Directory", "/of AppTitle");
  other.LocalRegistry().SaveSetting("Second_settings_Directory", "/of the title");
  EXPECT_EQ(GetDataDirectory(other), "/of the title");
}

TEST_F(TheDataFolder, IsReadUnderTheKeyWithASmallSAndTheTitleOfTheMoment) {
  globals.LocalRegistry().SaveSetting("Tarvo_settings_Directory", "/chosen");
  EXPECT_EQ(GetDataDirectory(globals), "/chosen");
}

TEST(TheArgumentString, IsComparedAsAWholeIgnoringLetterCase) {
  NullFrontEnd frontEnd;
  const auto matches = [&](const char* arguments) {
    return Globals(SystemPlatform(), frontEnd, arguments).ArgumentsAre("/v");
  };
  EXPECT_TRUE(matches("/v"));
  EXPECT_TRUE(matches("/V"));
  EXPECT_FALSE(matches("/v "));
  EXPECT_FALSE(matches("/v /r"));
  EXPECT_FALSE(matches(""));
}

TEST(TheVersionText, HasPlainNumbersWithoutPadding) {
  EXPECT_EQ(VersionText(2, 1, 35), "Version 2.1.35");
  EXPECT_EQ(VersionText(2, 1, 5), "Version 2.1.5");
}

}  // namespace
}  // namespace tarvo::test
