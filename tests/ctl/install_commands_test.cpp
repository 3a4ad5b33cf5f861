#include <chrono>
#include <sstream>
#include <thread>

#include "ctl/terminal_program.h"
#include "support/made_package.h"
#include "support/program_run.h"

namespace tarvo::test {
namespace {

using ::testing::HasSubstr;

class InstallingFromATerminal : public ProgramRun {
 protected:
  InstallingFromATerminal() { folder.MakeFolder(InData("Drivers")); }

  int Run(const std::vector<std::string>& arguments) {
    std::ostringstream out;
    std::ostringstream err;
    const int code = RunTerminalProgram(platform, arguments, out, err);
    output = out.str();
    error = err.str();
    return code;
  }
  std::string Package(const std::string& name, const PackageFiles& files = {{"driver.inf", "x"}}) {
    return MakePackage(folder, name, files);
  }
  bool Exists(const std::string& name) { return std::filesystem::exists(folder / InDrivers(name)); }

  std::string output;
  std::string error;
};

TEST_F(InstallingFromATerminal, InstallsFilesGivenByAnyPath) {
  Package("packages/A_1.drv");
  const std::string absolute = Package("packages/B_1.drv");
  std::filesystem::current_path(folder / "packages");
  EXPECT_EQ(Run({"drivers", "install", "A_1.drv", absolute}), 0) << error;
  EXPECT_TRUE(Exists("A/driver.inf"));
  EXPECT_TRUE(Exists("B/Data"));
  EXPECT_EQ(error, "");
}

TEST_F(InstallingFromATerminal, StartsTheToolsForTheirVersions) {
  const std::string record = folder / "record";
  const std::string tool = "#!/bin/sh\necho \"$0 $1\" >> '" + record + "'\n";
  const std::string package = Package("A_1.drv", {{"driver.inf", ""}, {"Properties.EXE", tool}});
  EXPECT_EQ(Run({"drivers", "install", package}), 0) << error;
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  std::string line;
  while (!line.ends_with('\n') && std::chrono::steady_clock::now() < deadline) {
    if (std::filesystem::exists(record)) line = ReadFileAt(record);
    std::this_thread::yield();
  }
  EXPECT_THAT(line, HasSubstr("Properties.EXE /v"));
}

TEST_F(InstallingFromATerminal, SaysInOneSentenceWhichPackageIsInvalid) {
  const std::string bad = folder.WriteFile("Bad_1.drv", "damaged");
  EXPECT_EQ(Run({"drivers", "install", Package("A_1.drv"), bad, Package("C_1.drv")}), 1);
  EXPECT_EQ(error, "tarvoctl: Invalid Driver file: " + bad +
                       ": The package has no end record: it is cut off or no zip archive.\n");
  EXPECT_TRUE(Exists("A"));
  EXPECT_FALSE(Exists("C"));
}

TEST_F(InstallingFromATerminal, RefreshesInstalledDriversOnly) {
  Driver("Meter");
  Package(InData("Meter_1.drv"));
  Package(InData("Other_1.drv"));
  EXPECT_EQ(Run({"drivers", "refresh"}), 0) << error;
  EXPECT_TRUE(Exists("Meter/driver.inf"));
  EXPECT_FALSE(Exists("Other"));
}

TEST_F(InstallingFromATerminal, HasNothingToRefreshWithoutPackages) {
  Driver("Meter");
  EXPECT_EQ(Run({"drivers", "refresh"}), 0) << error;
}

TEST_F(InstallingFromATerminal, FailsToRefreshWithAFileWithoutAnUnderscore) {
  folder.WriteFile(InData("Meter.drv"));
  EXPECT_EQ(Run({"drivers", "refresh"}), 1);
  EXPECT_THAT(error, HasSubstr("(error 5)"));
}

}  // namespace
}  // namespace tarvo::test
