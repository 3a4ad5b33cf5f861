#include "tools/tool.h"

#include <filesystem>

#include "base/runtime_error.h"
#include "tool_fixture.h"
#include "tools/device_settings.h"

namespace tarvo::tools {
namespace {

using ::testing::ElementsAre;

void NoPause() {}

TEST_F(ToolTest, BelongsToTheDriverThatItsFolderIsNamedAfter) {
  EXPECT_EQ(tool->DriverName(), "Meter");
}

TEST_F(ToolTest, RecordsTheDriversVersionUnderItsKeyAlone) {
  tool->RecordVersion("_DOWNLOAD", NoPause);
  EXPECT_THAT(tool->Settings().EnumEntries(), ElementsAre("tarvo.versions_Meter_DOWNLOAD"));
  EXPECT_EQ(Stored("tarvo.versions_Meter_DOWNLOAD"), "1.0");
}

TEST_F(ToolTest, RecordsTheVersionOfADescriptionInAnyLetterCase) {
  std::filesystem::rename(folder / "Meter/driver.inf", folder / "Meter/DRIVER.INF");
  tool->RecordVersion("_UPLOAD", NoPause);
  EXPECT_EQ(Stored("tarvo.versions_Meter_UPLOAD"), "1.0");
}

TEST_F(ToolTest, RecordsItsVersionAgainWhenAnotherProgramHasOverwrittenIt) {
  int pauses = 0;
  tool->RecordVersion("_UPLOAD", [&] {
    if (++pauses < 3) tool->Settings().DeleteKey("tarvo.versions_Meter_UPLOAD");
  });
  EXPECT_EQ(pauses, 3);
  EXPECT_EQ(Stored("tarvo.versions_Meter_UPLOAD"), "1.0");
}

TEST_F(ToolTest, FailsWhenItsVersionNeverStays) {
  int pauses = 0;
  const auto overwrite = [&] {
    ++pauses;
    tool->Settings().DeleteKey("tarvo.versions_Meter_UPLOAD");
  };
  EXPECT_THROW(tool->RecordVersion("_UPLOAD", overwrite), RuntimeError);
  EXPECT_EQ(pauses, 10);
}

TEST_F(ToolTest, RecordsNothingWithoutAVersion) {
  Describe("[Driver]\nModel=VT-40\n");
  EXPECT_THROW(tool->RecordVersion("_DOWNLOAD", NoPause), RuntimeError);
  std::filesystem::remove(folder / "Meter/driver.inf");
  EXPECT_THROW(tool->RecordVersion("_DOWNLOAD", NoPause), RuntimeError);
  EXPECT_TRUE(tool->Settings().EnumEntries().empty());
}

TEST_F(ToolTest, OfAnotherDriverHasSettingsOfItsOwn) {
  const DeviceSettings chosen{.port = "USB", .site = "Lock Gate", .interval = 10};
  SaveDeviceSettings(*tool, chosen);
  Tool other(platform, folder.MakeFolder("Tide Gauge"));
  EXPECT_EQ(LoadDeviceSettings(*tool), chosen);
  EXPECT_EQ(LoadDeviceSettings(other), DeviceSettings{});
}

TEST_F(ToolTest, ReadsAnIntervalThatMakesNoSenseAsTheDefault) {
  for (const char* interval : {"", "x", "0", "-5", "1441", "1E+20"}) {
    tool->Settings().SaveSetting("tarvo.settings_Meter_INTERVAL", interval);
    EXPECT_EQ(LoadDeviceSettings(*tool).interval, 30) << interval;
  }
}

TEST(ToolOptionsTest, AreTheDefaultsWithoutArguments) {
  const auto options = ReadOptions({});
  ASSERT_TRUE(options);
  EXPECT_FALSE(options->recordsVersion || options->fails || options->closes);
  EXPECT_EQ(options->seconds, 3);
}

TEST(ToolOptionsTest, AreReadFromTheArguments) {
  const auto options = ReadOptions({"--seconds", "0.5", "--fail", "--close"});
  ASSERT_TRUE(options);
  EXPECT_TRUE(options->fails && options->closes);
  EXPECT_FALSE(options->recordsVersion);
  EXPECT_EQ(options->seconds, 0.5);
}

TEST(ToolOptionsTest, KnowTheVersionSwitchInAnyLetterCase) {
  EXPECT_TRUE(ReadOptions({"/v"})->recordsVersion);
  EXPECT_TRUE(ReadOptions({"/V"})->recordsVersion);
}

TEST(ToolOptionsTest, AreRefusedWhenNotUnderstood) {
  EXPECT_FALSE(ReadOptions({"/x"}));
  EXPECT_FALSE(ReadOptions({""}));
  for (const char* seconds : {"-1", "x", "", "3601", "nan"}) {
    EXPECT_FALSE(ReadOptions({"--seconds", seconds})) << seconds;
  }
  EXPECT_FALSE(ReadOptions({"--seconds"}));
}

}  // namespace
}  // namespace tarvo::tools
