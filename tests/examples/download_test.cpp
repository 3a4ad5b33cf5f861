#include "tools/download.h"

#include <filesystem>
#include <set>

#include "base/runtime_error.h"
#include "tool_fixture.h"
#include "tools/device_settings.h"
#include "tools/upload.h"

namespace tarvo::tools {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class DownloadTest : public ToolTest {
 protected:
  std::string Run() {
    Download download(*tool);
    for (int i = 0; i < download.BlockCount(); ++i) download.MoveBlock();
    return download.Finish();
  }

  std::set<std::string> Files(const std::string& name = "Meter/Data") const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder / name)) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }
};

TEST_F(DownloadTest, WritesOneDatedFileOfEachKindIntoData) {
  EXPECT_EQ(Run(), "48 readings saved.");
  EXPECT_THAT(Files(), ElementsAre("Meter 2023-03-15.asc", "Meter 2023-03-15.csv"));
}

TEST_F(DownloadTest, WritesTheKindsThatTheDescriptionNames) {
  Describe("[Device]\nFiles=TXT,HVD\n");
  Run();
  EXPECT_THAT(Files(), ElementsAre("Meter 2023-03-15.hvd", "Meter 2023-03-15.txt"));
}

TEST_F(DownloadTest, HasTheReadingsOfTheLast24Hours) {
  Run();
  const std::string text = folder.ReadFile("Meter/Data/Meter 2023-03-15.csv");
  EXPECT_THAT(text, HasSubstr("Status\r\n2023-03-14,12:30,"));
  EXPECT_THAT(text.substr(text.rfind('\n', text.size() - 2)), HasSubstr("2023-03-15,12:00,"));
  EXPECT_EQ(std::ranges::count(text, '\n'), 1 + 48);
}

TEST_F(DownloadTest, NeverReplacesAnEarlierOne) {
  Run();
  const std::string first = folder.ReadFile("Meter/Data/Meter 2023-03-15.csv");
  platform.PassSeconds(600);
  Run();
  Run();
  EXPECT_THAT(Files(), ElementsAre("Meter 2023-03-15 2.asc", "Meter 2023-03-15 2.csv",
                                   "Meter 2023-03-15 3.asc", "Meter 2023-03-15 3.csv",
                                   "Meter 2023-03-15.asc", "Meter 2023-03-15.csv"));
  EXPECT_EQ(folder.ReadFile("Meter/Data/Meter 2023-03-15.csv"), first);
  EXPECT_NE(folder.ReadFile("Meter/Data/Meter 2023-03-15 2.csv"), first);
}

TEST_F(DownloadTest, KeepsItsFilesTogetherWhenOneNameIsTakenInAnotherLetterCase) {
  folder.WriteFile("Meter/Data/METER 2023-03-15.ASC");
  Run();
  EXPECT_THAT(Files(), ElementsAre("METER 2023-03-15.ASC", "Meter 2023-03-15 2.asc",
                                   "Meter 2023-03-15 2.csv"));
}

TEST_F(DownloadTest, UsesADataFolderOfAnyLetterCase) {
  folder.MakeFolder("Meter/DATA");
  Run();
  EXPECT_THAT(Files("Meter"), ElementsAre("DATA", "driver.inf"));
  EXPECT_EQ(Files("Meter/DATA").size(), 2u);
}

TEST_F(DownloadTest, WritesNothingBeforeItIsFinished) {
  Download download(*tool);
  for (int i = 0; i < download.BlockCount(); ++i) download.MoveBlock();
  EXPECT_FALSE(std::filesystem::exists(folder / "Meter/Data"));
}

TEST_F(DownloadTest, FailsWhenDataIsAFile) {
  folder.WriteFile("Meter/Data");
  EXPECT_THROW(Run(), RuntimeError);
  EXPECT_EQ(folder.ReadFile("Meter/Data"), "");
}

TEST_F(DownloadTest, FailsWithoutADescription) {
  std::filesystem::remove(folder / "Meter/driver.inf");
  EXPECT_THROW(Download{*tool}, RuntimeError);
}

TEST_F(DownloadTest, FollowsAChosenIntervalOnlyAfterAnUpload) {
  SaveDeviceSettings(*tool, {.port = "COM1", .site = "", .interval = 60});
  EXPECT_EQ(Download(*tool).BlockCount(), 48);
  EXPECT_EQ(Upload(*tool).Finish(), "The device has its new settings.");
  EXPECT_EQ(Download(*tool).BlockCount(), 24);
}

TEST_F(DownloadTest, WritesTheSiteInTheCodePage) {
  Describe("[Driver]\nModel=VT-40\n[Device]\nFiles=TXT\n");
  SaveDeviceSettings(*tool, {.port = "COM1", .site = "K\u00F6ln", .interval = 30});
  Run();
  EXPECT_THAT(folder.ReadFile("Meter/Data/Meter 2023-03-15.txt"), HasSubstr(", K\xF6ln\r\n"));
}

}  // namespace
}  // namespace tarvo::tools
