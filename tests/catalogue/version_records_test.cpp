#include "catalogue/version_records.h"

#include "base/runtime_error.h"
#include "support/program_run.h"

namespace tarvo::test {
namespace {

using ::testing::ElementsAre;

// A system that keeps program settings beside the settings store.
class SettingsPlatform : public HandMovedPlatform {
 public:
  void DeleteProgramSettings(std::string_view application, std::string_view section) override {
    asked.push_back(std::string(application) + " / " + std::string(section));
    if (failsFor == application) throw RuntimeError(kInvalidProcedureCall);
  }

  std::vector<std::string> asked;
  std::string failsFor;
};

TEST(ForgettingARemovedDriver, DeletesItsSectionAndThenTheSettingsUnderItsName) {
  SettingsPlatform platform;
  RemoveReg(platform, "Tide Gauge");
  EXPECT_THAT(platform.asked, ElementsAre("tarvo.versions / Tide Gauge", "Tide Gauge / "));
}

TEST(ForgettingARemovedDriver, LeavesTheSecondStepUndoneWhenTheFirstFails) {
  SettingsPlatform platform;
  platform.failsFor = "tarvo.versions";
  EXPECT_THROW(RemoveReg(platform, "Meter"), RuntimeError);
  EXPECT_THAT(platform.asked, ElementsAre("tarvo.versions / Meter"));
}

TEST(ForgettingARemovedDriver, HasNothingToDoWhereTheSystemKeepsNoSuchSettings) {
  EXPECT_NO_THROW(RemoveReg(SystemPlatform(), "Meter"));
}

}  // namespace
}  // namespace tarvo::test
