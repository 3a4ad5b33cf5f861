#include "ctl/terminal_program.h"

#include <sstream>

#include "support/list_run.h"
#include "support/made_dictionary.h"

namespace tarvo::test {
namespace {

using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::Not;
using ::testing::StartsWith;

struct Result {
  int code;
  std::string out;
  std::string err;
};

class TheTerminalProgram : public ListRun {
 protected:
  Result Run(const std::vector<std::string>& arguments) {
    std::ostringstream out;
    std::ostringstream err;
    const int code = RunTerminalProgram(platform, arguments, out, err);
    return {code, out.str(), err.str()};
  }

  // One plain sentence on one line, naming the program.
  static void ExpectOneSentence(const Result& result) {
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, StartsWith("tarvoctl: "));
    EXPECT_EQ(result.err.find('\n'), result.err.size() - 1) << result.err;
    EXPECT_EQ(result.err[result.err.size() - 2], '.') << result.err;
  }
};

TEST_F(TheTerminalProgram, StoresAndShowsASetting) {
  EXPECT_EQ(Run({"settings", "set", "Größe", "1 é"}).code, 0);
  const Result result = Run({"settings", "get", "GRÖSSE"});
  EXPECT_EQ(result.code, 1) << "sharp s has no capital here";
  EXPECT_EQ(Run({"settings", "get", "grÖße"}).out, "1 é\n");
}

TEST_F(TheTerminalProgram, ShowsAnEmptySettingAsFound) {
  Run({"settings", "set", "Empty", ""});
  const Result result = Run({"settings", "get", "Empty"});
  EXPECT_EQ(result.code, 0);
  EXPECT_EQ(result.out, "\n");
}

TEST_F(TheTerminalProgram, ShowsASettingThatReadsLikeItsOwnSentinel) {
  Run({"settings", "set", "K", "absent"});
  EXPECT_EQ(Run({"settings", "get", "K"}).out, "absent\n");
}

TEST_F(TheTerminalProgram, SaysThatASettingIsMissing) {
  const Result result = Run({"settings", "get", "Nothing"});
  EXPECT_EQ(result.code, 1);
  ExpectOneSentence(result);
  EXPECT_THAT(result.err, HasSubstr("\"Nothing\""));
}

TEST_F(TheTerminalProgram, RefusesABadKeyWithASentence) {
  const Result result = Run({"settings", "set", "a~b", "1"});
  EXPECT_EQ(result.code, 1);
  ExpectOneSentence(result);
}

TEST_F(TheTerminalProgram, SaysWhenAValueCannotBeStoredAsItStands) {
  const Result result = Run({"settings", "set", "K", "日本"});
  EXPECT_EQ(result.code, 1);
  ExpectOneSentence(result);
}

TEST_F(TheTerminalProgram, ListsSettingsInFileOrderOneOnALine) {
  Run({"settings", "set", "b", "two\nlines"});
  Run({"settings", "set", "A", "tab\tand \\"});
  Run({"settings", "set", "long", std::string(3000, 'x')});
  EXPECT_EQ(Run({"settings", "list"}).out,
            "b\ttwo\\nlines\nA\ttab\\tand \\\\\nlong\t" + std::string(3000, 'x') + "\n");
}

TEST_F(TheTerminalProgram, DeletesASettingByItsExactKeyOnly) {
  Run({"settings", "set", "Key", "1"});
  EXPECT_EQ(Run({"settings", "delete", "KEY"}).code, 1);
  EXPECT_EQ(Run({"settings", "delete", "Key"}).code, 0);
  EXPECT_EQ(Run({"settings", "get", "Key"}).code, 1);
  EXPECT_EQ(Run({"settings", "delete", "Key"}).code, 1);
}

TEST_F(TheTerminalProgram, FailsWhenTheSettingsFileCannotBeUsed) {
  std::filesystem::remove(folder / kSettingsFile);
  folder.MakeFolder(kSettingsFile);
  for (const std::vector<std::string>& call :
       {std::vector<std::string>{"settings", "list"}, {"settings", "set", "K", "1"}}) {
    const Result result = Run(call);
    EXPECT_EQ(result.code, 1);
    ExpectOneSentence(result);
  }
}

TEST_F(TheTerminalProgram, ListsDriversInTheWindowsOrderWithoutTheAddItem) {
  DriverFile("b/one.csv");
  DriverFile("A/one.txt");
  const Result result = Run({"drivers", "list"});
  EXPECT_EQ(result.code, 0) << result.err;
  EXPECT_EQ(result.out,
            "name  csv  asc  txt  download  upload  properties\n"
            "A     0         1    -         -       -\n"
            "b     1              -         -       -\n");
}

TEST_F(TheTerminalProgram, ListsDriversAsJson) {
  DriverFile("Meter/one.csv");
  globals->LocalRegistry().SaveSetting("tarvo.versions_Meter_UPLOAD", "2 \"beta\"");
  const Result result = Run({"drivers", "list", "--json"});
  EXPECT_EQ(result.out,
            "[\n  {\"name\": \"Meter\", \"csv\": \"1\", \"asc\": \"\", \"txt\": \"\", "
            "\"download\": \"-\", \"upload\": \"2 \\\"beta\\\"\", \"properties\": \"-\"}\n]\n");
}

TEST_F(TheTerminalProgram, WritesValidJsonForEveryName) {
  Driver("quote\" back\\ tab\t line\n bell\x07 é");
  Driver("bad\xFF\xC3");
  const Result result = Run({"drivers", "list", "--json"});
  EXPECT_THAT(result.out, HasSubstr(R"("name": "quote\" back\\ tab\t line\n bell\u0007 é")"));
  EXPECT_THAT(result.out, HasSubstr("\"name\": \"bad\uFFFD\uFFFD\""));
}

TEST_F(TheTerminalProgram, WritesAnEmptyListAsJson) {
  EXPECT_EQ(Run({"drivers", "list", "--json"}).out, "[]\n");
}

TEST_F(TheTerminalProgram, KeepsEveryNameOnOneLineOfTheTable) {
  Driver("two\nlines");
  EXPECT_THAT(Run({"drivers", "list"}).out, HasSubstr("two\\nlines  0"));
}

TEST_F(TheTerminalProgram, LeavesTheWindowsSettingsAloneWhenListing) {
  Run({"drivers", "list"});
  EXPECT_EQ(Run({"settings", "list"}).out, "");
}

TEST_F(TheTerminalProgram, SaysWhyDriversCannotBeListed) {
  Run({"settings", "set", "Tarvo_Settings_Directory", folder / "nowhere"});
  const Result result = Run({"drivers", "list"});
  EXPECT_EQ(result.code, 1);
  ExpectOneSentence(result);
  EXPECT_THAT(result.err, HasSubstr("Path not found"));
}

TEST_F(TheTerminalProgram, FillsParametersIntoAPhrase) {
  EXPECT_EQ(Run({"translate", "%1 of %2", "3¦7"}).out, "3 of 7\n");
  EXPECT_EQ(Run({"translate", "Name"}).out, "Name\n");
}

TEST_F(TheTerminalProgram, TranslatesWithTheDictionaryOfTheCurrentFolder) {
  MakeDictionary(folder, PoText({{"Name", "Bezeichnung"}, {"Tarvo", "Titel"}}), {},
                 InData("TARVO.DIC"));
  EXPECT_EQ(Run({"translate", "Name"}).out, "Bezeichnung\n");
}

TEST_F(TheTerminalProgram, FindsTheDataFolderUnderTheTranslatedTitle) {
  MakeDictionary(folder, PoText({{"Tarvo", "Titel"}}), {}, InData("TARVO.DIC"));
  Run({"settings", "set", "Titel_Settings_Directory", folder.MakeFolder("chosen")});
  folder.MakeFolder("chosen/Drivers/Elsewhere");
  EXPECT_THAT(Run({"drivers", "list"}).out, HasSubstr("Elsewhere"));
}

TEST_F(TheTerminalProgram, ShowsHelpAndVersion) {
  EXPECT_THAT(Run({"--help"}).out, HasSubstr("tarvoctl settings get KEY"));
  EXPECT_THAT(Run({"--version"}).out, MatchesRegex("tarvoctl [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST_F(TheTerminalProgram, RefusesWrongUsageWithCode2) {
  const std::vector<std::vector<std::string>> calls = {
      {},
      {"nonsense"},
      {"settings"},
      {"settings", "get"},
      {"settings", "get", "a", "b"},
      {"settings", "set", "a"},
      {"settings", "list", "more"},
      {"drivers", "list", "--xml"},
      {"settings", "get", "--json", "K"},
      {"translate"},
      {"--help", "me"},
  };
  for (const auto& call : calls) {
    const Result result = Run(call);
    EXPECT_EQ(result.code, 2) << ::testing::PrintToString(call);
    ExpectOneSentence(result);
  }
}

TEST_F(TheTerminalProgram, FailsWhenItsResultsCannotBeWritten) {
  std::ostringstream out;
  std::ostringstream err;
  out.setstate(std::ios::badbit);
  EXPECT_EQ(RunTerminalProgram(platform, {"translate", "x"}, out, err), 1);
  EXPECT_THAT(err.str(), Not(::testing::IsEmpty()));
}

}  // namespace
}  // namespace tarvo::test
