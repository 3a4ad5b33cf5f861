#include <sstream>

#include "ctl/listed_drivers.h"
#include "ctl/terminal_program.h"
#include "support/made_help.h"
#include "support/program_run.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class DriversFromATerminal : public ProgramRun {
 protected:
  DriversFromATerminal() { folder.MakeFolder(InData("Drivers")); }

  int Run(const std::vector<std::string>& arguments, const std::string& input = {}) {
    std::ostringstream out;
    std::ostringstream err;
    std::istringstream in(input);
    const int code = RunTerminalProgram(platform, arguments, out, err, in);
    output = out.str();
    error = err.str();
    return code;
  }
  bool Exists(const std::string& name) const {
    return fs::exists(fs::symlink_status(folder / InDrivers(name)));
  }

  std::string output;
  std::string error;
};

TEST_F(DriversFromATerminal, AreRemovedAfterTheTwoQuestionsOfTheWindow) {
  DriverFile("Tide Gauge/Data/a.csv");
  platform.hasTerminal = true;
  EXPECT_EQ(Run({"drivers", "remove", "tide gauge"}, "y\nYES\n"), 0) << error;
  EXPECT_EQ(error,
            "Are you sure? [y/n] You have 1 downloads for this driver.\n"
            "Removing the driver will also erase these files.\nAre you sure? [y/n] ");
  EXPECT_EQ(output, "The driver \"Tide Gauge\" has been removed.\n");
  EXPECT_FALSE(Exists("Tide Gauge"));
}

TEST_F(DriversFromATerminal, StayWhenAQuestionIsNotAnsweredWithYes) {
  DriverFile("Meter/a.csv", "data");
  platform.hasTerminal = true;
  for (const char* input : {"", "n\n", "\n", "yes please\n", "y\n", "y\nn\n"}) {
    EXPECT_EQ(Run({"drivers", "remove", "Meter"}, input), 1) << input;
    EXPECT_THAT(error, HasSubstr("The driver \"Meter\" was not removed."));
    EXPECT_EQ(folder.ReadFile(InDrivers("Meter/a.csv")), "data");
  }
}

TEST_F(DriversFromATerminal, AreNotRemovedWhereNobodyCanAnswer) {
  DriverFile("Meter/a.csv");
  EXPECT_EQ(Run({"drivers", "remove", "Meter"}, "y\ny\n"), 1);
  EXPECT_THAT(error, HasSubstr("--yes"));
  EXPECT_TRUE(Exists("Meter/a.csv"));
}

TEST_F(DriversFromATerminal, AreRemovedUnaskedWithTheOption) {
  DriverFile("Meter/a.csv");
  EXPECT_EQ(Run({"drivers", "remove", "Meter", "--yes", "--json"}), 0) << error;
  EXPECT_EQ(output, "{\"removed\": \"Meter\"}\n");
  EXPECT_EQ(error, "");
  EXPECT_FALSE(Exists("Meter"));
}

TEST_F(DriversFromATerminal, TellWhatCouldNotBeRemoved) {
  DriverFile("Meter/Data/locked");
  fs::permissions(folder / InDrivers("Meter/Data/locked"), fs::perms(0444));
  EXPECT_EQ(Run({"drivers", "remove", "Meter", "--yes"}), 1);
  EXPECT_THAT(error, HasSubstr("what remains is in " + folder / InDrivers("Meter")));
}

TEST_F(DriversFromATerminal, ThatAreNotThereCannotBeRemoved) {
  Driver("Meter");
  for (const char* name : {"Add", "(Add Driver)", "Met", "../Drivers/Meter", ""}) {
    EXPECT_EQ(Run({"drivers", "remove", name, "--yes"}), 1) << name;
    EXPECT_THAT(error, HasSubstr("There is no driver")) << name;
  }
  EXPECT_TRUE(Exists("Meter"));
}

TEST_F(DriversFromATerminal, AreTakenByTheirExactNameFirst) {
  Driver("Meter");
  Driver("METER");
  EXPECT_EQ(Run({"drivers", "remove", "Meter", "--yes"}), 0) << error;
  EXPECT_TRUE(Exists("METER"));
  EXPECT_FALSE(Exists("Meter"));
}

TEST_F(DriversFromATerminal, RecordTheirToolsVersionsWhichAreWaitedForAndListed) {
  const std::string done = folder / "done";
  DriverTool("Meter/Download.EXE", "sleep 0.2; echo \"$1\" > '" + done + "'");
  DriverFile("Meter/bad.exe", "no program");
  ASSERT_EQ(Run({"settings", "set", "tarvo.versions_Meter_DOWNLOAD", "1.5"}), 0) << error;
  EXPECT_EQ(Run({"drivers", "versions"}), 0) << error;
  EXPECT_EQ(ReadFileAt(done), "/v\n");
  EXPECT_EQ(output,
            "name   download  upload  properties\n"
            "Meter  1.5       -       -\n");
  EXPECT_EQ(Run({"drivers", "versions", "--json"}), 0) << error;
  EXPECT_EQ(output,
            "[\n  {\"name\": \"Meter\", \"download\": \"1.5\", \"upload\": \"-\", "
            "\"properties\": \"-\"}\n]\n");
}

// Counts the pictures that are read.
class PictureReadings : public ForwardingPlatform {
 public:
  using ForwardingPlatform::ForwardingPlatform;
  std::unique_ptr<File> OpenFile(std::string_view path, OpenFor use) override {
    if (path.ends_with(".ICO") || path.ends_with(".BMP")) ++count;
    return ForwardingPlatform::OpenFile(path, use);
  }
  int count = 0;
};

TEST_F(DriversFromATerminal, AreListedWithoutTheirPicturesWhichNobodySees) {
  for (const char* picture : {"driver.ICO", "Large.ICO", "Small.BMP"}) {
    DriverFile(std::string("Meter/") + picture, "no picture");
    DriverFile(std::string("Gauge/") + picture, "no picture");
  }
  DriverFile("Meter/a.csv");
  PictureReadings readings(platform);
  RecordingFrontEnd window;
  Globals globals(readings, window, "");
  const ListedDrivers listed(globals);
  EXPECT_EQ(readings.count, 6);
  readings.count = 0;
  std::ostringstream out;
  std::ostringstream err;
  EXPECT_EQ(RunTerminalProgram(readings, {"drivers", "list"}, out, err), 0) << err.str();
  EXPECT_THAT(out.str(), HasSubstr("Gauge  0    "));
  EXPECT_THAT(out.str(), HasSubstr("Meter  1    "));
  EXPECT_EQ(readings.count, 0);
}

// As the list beside them does.
TEST_F(DriversFromATerminal, RecordVersionsWhereTheListFindsThem) {
  fs::remove_all(folder / InData("Drivers"));
  const std::string done = folder / "done";
  folder.WriteProgram("documents/Drivers/Meter/Download.EXE", "echo \"$1\" > '" + done + "'");
  EXPECT_EQ(Run({"drivers", "versions"}), 0) << error;
  EXPECT_EQ(ReadFileAt(done), "/v\n");
  EXPECT_THAT(output, HasSubstr("Meter"));
}

class TheDoctor : public DriversFromATerminal {
 protected:
  // The line about a topic.
  std::string About(const std::string& topic) {
    EXPECT_EQ(Run({"doctor"}), 0) << error;
    std::istringstream lines(output);
    constexpr std::size_t kMark = 6;  // "odd:  " or blanks
    for (std::string line; std::getline(lines, line);) {
      if (line.substr(kMark).starts_with(topic + ": ")) return line;
    }
    return "nothing in: " + output;
  }
  static auto IsOdd() { return ::testing::StartsWith("odd: "); }
};

TEST_F(TheDoctor, FindsNothingOddInAWholeInstallation) {
  folder.WriteFile("own/TARVO.HLP",
                   HelpDocument(HelpSectionText("en", HelpTopicText("en", "start", "Start", ""))));
  ASSERT_EQ(Run({"settings", "set", "Tarvo_ProgramPath", folder / "own"}), 0);
  for (const char* topic :
       {"Dictionary", "Settings file", "Data folder", "Drivers", "Help file", "CSV files"}) {
    EXPECT_THAT(About(topic), Not(IsOdd())) << topic;
  }
}

TEST_F(TheDoctor, FindsFoldersThatCannotBeWritten) {
  fs::remove(folder / InData("Drivers"));
  EXPECT_THAT(About("Drivers"), IsOdd());
  folder.WriteFile(InData("Drivers"));
  EXPECT_THAT(About("Drivers"), IsOdd());
  ASSERT_EQ(Run({"settings", "set", "Tarvo_settings_Directory", folder / "gone"}), 0);
  EXPECT_THAT(About("Data folder"), ::testing::AllOf(IsOdd(), HasSubstr(folder / "gone")));
}

TEST_F(TheDoctor, FindsALockedOrDamagedSettingsFile) {
  ASSERT_EQ(Run({"settings", "set", "a", "b"}), 0);
  std::string bytes = folder.ReadFile(kSettingsFile);
  bytes.replace(2, 5, "12345");  // an owner without a time never goes stale
  folder.WriteFile(kSettingsFile, bytes);
  EXPECT_THAT(About("Settings file"), ::testing::AllOf(IsOdd(), HasSubstr("12345")));
  bytes.replace(2, 5, std::string(5, '\0'));
  folder.WriteFile(kSettingsFile, bytes + "x");
  EXPECT_THAT(About("Settings file"), ::testing::AllOf(IsOdd(), HasSubstr("inside a record")));
}

TEST_F(TheDoctor, FindsADictionaryThatIsNone) {
  folder.WriteFile(InData("TARVO.DIC"), "no dictionary");
  EXPECT_THAT(About("Dictionary"), IsOdd());
}

TEST_F(TheDoctor, FindsAMissingHelpFile) {
  ASSERT_EQ(Run({"settings", "set", "Tarvo_ProgramPath", folder / "nowhere"}), 0);
  EXPECT_THAT(About("Help file"), IsOdd());
}

TEST_F(TheDoctor, FindsAHelpFileThatIsNone) {
  ASSERT_EQ(Run({"settings", "set", "Tarvo_ProgramPath", folder / "own"}), 0);
  for (const char* content : {"", "<!DOCTYPE html>", "no help"}) {
    folder.WriteFile("own/TARVO.HLP", content);
    EXPECT_THAT(About("Help file"), ::testing::AllOf(IsOdd(), HasSubstr("TARVO.HLP"))) << content;
  }
  folder.WriteFile("own/TARVO.HLP", std::string("\x3F\x5F\x03\x00 classic", 12));
  EXPECT_THAT(About("Help file"), Not(IsOdd()));
}

TEST_F(TheDoctor, FindsACsvViewerThatIsNotInstalled) {
  platform.registry.Remove("csvFile\\shell\\open\\command");
  EXPECT_THAT(About("CSV files"), IsOdd());
  platform.registry.SetString("csvFile\\shell\\open\\command", "calc");
  EXPECT_THAT(About("CSV files"), IsOdd());
  platform.registry.SetString(".csv", "calc");
  EXPECT_THAT(About("CSV files"), Not(IsOdd()));
}

TEST_F(TheDoctor, SpeaksJson) {
  EXPECT_EQ(Run({"doctor", "--json"}), 0);
  EXPECT_THAT(output, HasSubstr("{\"topic\": \"CSV files\", \"state\": \"good\", "));
}

TEST_F(TheDoctor, LeavesNothingBehindInTheFoldersThatItTries) {
  Run({"doctor"});
  EXPECT_TRUE(fs::is_empty(folder / InData("Drivers")));
}

}  // namespace
}  // namespace tarvo::test
