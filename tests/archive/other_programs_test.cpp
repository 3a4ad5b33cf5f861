#include <cstdlib>
#include <filesystem>

#include "archive_maker.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

// Packages that other programs make of the folder "driver".
class PackagesOfOtherPrograms : public Packages {
 protected:
  void SetUp() override {
    folder.WriteFile("driver/Driver.inf", "[driver]\r\n");
    folder.WriteFile("driver/download.exe", std::string(100000, 'x'));
    folder.WriteFile("driver/Data/Größe ñ.csv", "1;2\n");
    folder.WriteFile("driver/empty");
    folder.MakeFolder("driver/nothing");
    whole_ = TreeOf(folder / "driver");
  }

  // Runs a command in the folder "driver".
  void Make(const std::string& command) {
    const std::string line =
        "cd '" + folder / "driver" + "' && export LC_ALL=C.UTF-8 && (" + command + ") >/dev/null";
    ASSERT_EQ(std::system(line.c_str()), 0) << command;
  }

  std::string Fault() {
    const auto fault = Package(SystemPlatform(), folder / "package.zip").Check();
    return fault ? fault->sentence : "";
  }

  void ExpectInstalls(const std::string& command) {
    fs::remove(folder / "package.zip");
    fs::remove_all(folder / "target");
    Make(command);
    Package package(SystemPlatform(), folder / "package.zip");
    const auto fault = package.Check();
    ASSERT_FALSE(fault) << command << ": " << fault->sentence;
    package.Unpack(folder / "target");
    EXPECT_EQ(TreeOf(folder / "target"), whole_) << command;
  }

  std::map<std::string, std::string> whole_;
};

TEST_F(PackagesOfOtherPrograms, OfZipInstall) {
  ExpectInstalls("zip -qr ../package.zip .");
  ExpectInstalls("zip -qr -UN=UTF8 ../package.zip .");
  ExpectInstalls("zip -qr -0 ../package.zip .");
  ExpectInstalls("zip -qr -fz ../package.zip .");
  ExpectInstalls("zip -qr - . | cat >../package.zip");
}

TEST_F(PackagesOfOtherPrograms, Of7zInstall) {
  ExpectInstalls("7z a -tzip ../package.zip .");
  ExpectInstalls("7z a -tzip -mcu=on -mx=9 ../package.zip .");
  ExpectInstalls("7z a -tzip -mx=0 ../package.zip .");
}

TEST_F(PackagesOfOtherPrograms, OfBsdtarInstall) {
  ExpectInstalls("bsdtar --format zip -cf ../package.zip .");
  ExpectInstalls("bsdtar --format zip --options zip:compression=store -cf ../package.zip *");
  ExpectInstalls("bsdtar --format zip -cf - . >../package.zip");
}

TEST_F(PackagesOfOtherPrograms, OfPythonInstall) {
  ExpectInstalls("python3 -m zipfile -c ../package.zip *");
}

TEST_F(PackagesOfOtherPrograms, WithPasswordsLinksAndOtherMethodsAreRefused) {
  Make("zip -q -P secret ../package.zip Driver.inf");
  EXPECT_EQ(Fault(), "The member \"Driver.inf\" is encrypted.");
  fs::remove(folder / "package.zip");
  Make("7z a -tzip -mm=LZMA ../package.zip Driver.inf download.exe");
  EXPECT_EQ(Fault(),
            "The member \"download.exe\" is packed with the method 14, which is unknown here.");
  fs::create_symlink("Driver.inf", folder / "driver/link");
  for (const char* command : {"zip -qry ../package.zip .", "7z a -tzip -snl ../package.zip .",
                              "bsdtar --format zip -cf ../package.zip ."}) {
    fs::remove(folder / "package.zip");
    Make(command);
    EXPECT_THAT(Fault(), HasSubstr("link\" is a link")) << command;
  }
}

TEST_F(PackagesOfOtherPrograms, WithNamesThatLeadElsewhereAreRefused) {
  Make(std::string("python3 '") + MAKE_ARCHIVE + "' names ../package.zip");
  EXPECT_EQ(Fault(), "The member \"../a\" has \"..\" in its path.");
}

TEST_F(PackagesOfOtherPrograms, With64BitSizesAndManyMembersInstall) {
  Make(std::string("python3 '") + MAKE_ARCHIVE + "' zip64 ../package.zip");
  EXPECT_EQ(Fault(), "");
  Make(std::string("python3 '") + MAKE_ARCHIVE + "' many ../package.zip");
  Package package(SystemPlatform(), folder / "package.zip");
  ASSERT_FALSE(package.Check());
  package.Unpack(folder / "target");
  EXPECT_EQ(folder.ReadFile("target/Data/69999.txt"), "69999");
}

}  // namespace
}  // namespace tarvo::test
