#include <gmock/gmock.h>

#include <filesystem>
#include <sstream>

#include "ctl/terminal_program.h"
#include "support/temporary_folder.h"

namespace tarvo::test {
namespace {

using ::testing::HasSubstr;

// A package with the one member "driver.inf" of the content "x", stored. `lastOfCrc` is 0x8C in a
// sound one.
std::string PackageBytes(char lastOfCrc = '\x8C') {
  const std::string numbers =
      std::string("\x83\x16\xDC", 3) + lastOfCrc + std::string("\1\0\0\0\1\0\0\0\12\0\0\0", 12);
  const std::string common = std::string("\24\0\0\0\0\0\0\0\0\0", 10) + numbers;
  const std::string local = std::string("PK\3\4", 4) + common + "driver.infx";
  const std::string central =
      std::string("PK\1\2\24\0", 6) + common + std::string(14, '\0') + "driver.inf";
  return local + central + std::string("PK\5\6\0\0\0\0\1\0\1\0", 12) +
         static_cast<char>(central.size()) + std::string(3, '\0') +
         static_cast<char>(local.size()) + std::string(5, '\0');
}

class PackageCommands : public ::testing::Test {
 protected:
  PackageCommands() {
    good = folder.WriteFile("Meter_1.0.drv", PackageBytes());
    bad = folder.WriteFile("bad.drv", PackageBytes('\x8D'));
  }

  int Run(const std::vector<std::string>& arguments) {
    std::ostringstream output;
    std::ostringstream errors;
    const int code = RunTerminalProgram(SystemPlatform(), arguments, output, errors);
    out = output.str();
    err = errors.str();
    return code;
  }

  const std::string reason = "The member \"driver.inf\" has a wrong checksum.";
  TemporaryFolder folder;
  std::string good;
  std::string bad;
  std::string out;
  std::string err;
};

TEST_F(PackageCommands, CheckSaysThatASoundPackageIsValid) {
  EXPECT_EQ(Run({"package", "check", good}), 0);
  EXPECT_EQ(out, good + ": The package is valid.\n");
  EXPECT_EQ(err, "");
}

TEST_F(PackageCommands, CheckTellsTheReasonAndTheMemberOfEachInvalidPackage) {
  EXPECT_EQ(Run({"package", "check", bad, good, folder / "missing.drv"}), 1);
  EXPECT_THAT(out, HasSubstr(bad + ": " + reason + "\n"));
  EXPECT_THAT(out, HasSubstr(good + ": The package is valid.\n"));
  EXPECT_THAT(out, HasSubstr("missing.drv: The package cannot be read: File not found"));
  EXPECT_EQ(err, "tarvoctl: 2 of 3 packages are not valid.\n");
}

TEST_F(PackageCommands, CheckAnswersInJson) {
  EXPECT_EQ(Run({"package", "check", bad, good, "--json"}), 1);
  EXPECT_EQ(out, "[\n  {\"file\": \"" + bad +
                     "\", \"valid\": false, \"member\": \"driver.inf\", \"reason\": \"The member "
                     "\\\"driver.inf\\\" has a wrong checksum.\"},\n  {\"file\": \"" +
                     good + "\", \"valid\": true}\n]\n");
}

TEST_F(PackageCommands, CheckAsksForNoDescriptionInHandHeldComponents) {
  const std::string empty = std::string("PK\5\6", 4) + std::string(18, '\0');
  EXPECT_EQ(Run({"package", "check", folder.WriteFile("Installers.PKG", empty)}), 0);
  EXPECT_EQ(Run({"package", "check", folder.WriteFile("Driver.drv", empty)}), 1);
}

TEST_F(PackageCommands, UnpackPutsASoundPackageIntoTheFolder) {
  EXPECT_EQ(Run({"package", "unpack", good, folder / "new/Meter"}), 0);
  EXPECT_EQ(folder.ReadFile("new/Meter/driver.inf"), "x");
}

TEST_F(PackageCommands, UnpackWritesNothingOfAnInvalidPackage) {
  EXPECT_EQ(Run({"package", "unpack", bad, folder / "Meter"}), 1);
  EXPECT_EQ(err, "tarvoctl: " + bad + ": " + reason + "\n");
  EXPECT_FALSE(std::filesystem::exists(folder / "Meter"));
}

TEST_F(PackageCommands, UnpackTellsWhyItFailed) {
  folder.WriteFile("Meter", "a file");
  EXPECT_EQ(Run({"package", "unpack", good, folder / "Meter"}), 1);
  EXPECT_THAT(err, HasSubstr("is no folder"));
  EXPECT_THAT(err, HasSubstr("(error 75)."));
}

}  // namespace
}  // namespace tarvo::test
