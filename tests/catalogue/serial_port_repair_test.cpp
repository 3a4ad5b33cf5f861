#include "catalogue/serial_port_repair.h"

#include "support/program_run.h"

namespace tarvo::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class OwnFolderPlatform : public RootedPlatform {
 public:
  explicit OwnFolderPlatform(std::string folder)
      : RootedPlatform(folder), own_(std::move(folder)) {}
  std::string ProgramFolder() override { return own_; }

 private:
  std::string own_;
};

class TheSerialPortRepair : public ProgramRun {
 protected:
  OwnFolderPlatform platform{folder.MakeFolder("own")};
  Globals globals{platform, frontEnd, ""};
};

TEST_F(TheSerialPortRepair, RunsTheProgramOnceForTenSecondsAndRemovesIt) {
  const std::string program = folder.WriteProgram("own/mscommpatch.EXE", "");
  const double start = platform.secondsOfDay;
  frontEnd.whileWaiting = [&] {
    EXPECT_TRUE(std::filesystem::exists(program));
    platform.PassSeconds(3);
  };
  Check4MscommPatch(globals);
  EXPECT_THAT(platform.started, ElementsAre(program + " (minimised)"));
  EXPECT_GT(platform.secondsOfDay, start + 10);
  EXPECT_FALSE(std::filesystem::exists(program));
}

TEST_F(TheSerialPortRepair, DoesNothingWithoutTheProgram) {
  Check4MscommPatch(globals);
  EXPECT_THAT(platform.started, IsEmpty());
  EXPECT_THAT(frontEnd.waits, IsEmpty());
}

}  // namespace
}  // namespace tarvo::test
