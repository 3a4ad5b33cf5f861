#include <gtest/gtest.h>
#include <windows.h>
// After it: uses its types.
#include <oleauto.h>

#include <cmath>
#include <filesystem>

#include "base/paths.h"
#include "platform/contract.h"
#include "platform/windows/system_folders.h"
#include "platform/windows/wide_text.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

constexpr const wchar_t* kVariable = L"TARVO_COMMON_DOCUMENTS";

class SpecialFolders : public ::testing::Test {
 protected:
  ~SpecialFolders() override { ::SetEnvironmentVariableW(kVariable, nullptr); }
  static std::string CommonWith(const std::string& value) {
    ::SetEnvironmentVariableW(kVariable, Wide(value).c_str());
    return CommonDocumentsFolder("C:\\start").value_or("none");
  }
};

TEST_F(SpecialFolders, TheCommonDocumentsAreTheSystemsUnlessTheVariableNamesOthers) {
  ::SetEnvironmentVariableW(kVariable, nullptr);
  const auto common = SystemPlatform().SpecialFolder(kCommonDocuments);
  ASSERT_TRUE(common);
  EXPECT_TRUE(fs::is_directory(*common)) << *common;
  EXPECT_NE(common->back(), '\\');
  EXPECT_EQ(CommonWith("D:\\docs"), "D:\\docs");
  EXPECT_EQ(CommonWith("D:\\Größe Ł\\"), "D:\\Größe Ł");
  EXPECT_EQ(CommonWith("D:/docs/"), "D:\\docs");
  EXPECT_EQ(CommonWith("docs"), "C:\\start\\docs");
  EXPECT_EQ(CommonWith("D:\\"), "D:\\");
}

TEST_F(SpecialFolders, UnderWineTheVariableMayNameAPathOfTheSystemBelow) {
  const HMODULE kernel = ::GetModuleHandleW(L"kernel32.dll");
  if (!::GetProcAddress(kernel, "wine_get_dos_file_name")) GTEST_SKIP() << "this is not Wine";
  EXPECT_EQ(CommonWith("/tmp/docs"), "Z:\\tmp\\docs");
}

TEST_F(SpecialFolders, TheUsersDocumentsAreThere) {
  const auto own = SystemPlatform().SpecialFolder(kPersonalDocuments);
  ASSERT_TRUE(own);
  EXPECT_TRUE(fs::is_directory(*own)) << *own;
  EXPECT_EQ(SystemPlatform().SpecialFolder(12345), std::nullopt);
}

TEST(ProgramFolder, HoldsTheRunningProgram) {
  EXPECT_TRUE(fs::exists(JoinPath(SystemPlatform().ProgramFolder(), "platform_test.exe")));
}

TEST(LocalClock, CountsTheDaysAndSecondsOfTheLocalTime) {
  SYSTEMTIME before;
  SYSTEMTIME after;
  double now = 0;
  double seconds = 0;
  do {
    ::GetLocalTime(&before);
    now = SystemPlatform().Now();
    seconds = SystemPlatform().SecondsSinceMidnight();
    ::GetLocalTime(&after);
  } while (after.wDay != before.wDay);
  const auto secondsOf = [](const SYSTEMTIME& time) {
    return time.wHour * 3600.0 + time.wMinute * 60.0 + time.wSecond + time.wMilliseconds / 1000.0;
  };
  constexpr double kStep = 0.02;  // of the calendar's clock
  EXPECT_GE(seconds, secondsOf(before) - kStep);
  EXPECT_LE(seconds, secondsOf(after) + kStep);
  EXPECT_NEAR((now - std::floor(now)) * 86400, seconds, 1);
  double day = 0;
  ::SystemTimeToVariantTime(&before, &day);
  EXPECT_EQ(std::floor(now), std::floor(day));
}

TEST(LocalClock, HasAFractionFinerThanAMillisecond) {
  int finer = 0;
  for (int i = 0; i < 20; ++i) {
    const double milliseconds = SystemPlatform().SecondsSinceMidnight() * 1000;
    if (std::abs(milliseconds - std::round(milliseconds)) > 0.001) ++finer;
  }
  EXPECT_GT(finer, 0);
}

TEST(UsersLocale, GivesDatesThatDifferAndASignOfOneCharacter) {
  Platform& platform = SystemPlatform();
  EXPECT_EQ(platform.DecimalSeparator().size(), 1u);
  EXPECT_FALSE(platform.ShortDate({2023, 2, 3}).empty());
  EXPECT_NE(platform.ShortDate({2023, 2, 3}), platform.ShortDate({2023, 3, 2}));
  EXPECT_NE(platform.ShortDate({2023, 2, 3}), platform.ShortDate({2024, 2, 3}));
}

TEST(Findings, TellOfTheFileManagerTheProgramsAndTheCodePage) {
  const auto findings = SystemPlatform().Findings();
  ASSERT_EQ(findings.size(), 3u);
  EXPECT_EQ(findings[0].topic, "File manager");
  EXPECT_TRUE(findings[0].isGood);
  EXPECT_EQ(findings[1].topic, "Programs for Windows");
  EXPECT_EQ(findings[1].isGood, Runs32BitPrograms());
  EXPECT_EQ(findings[2].topic, "Code page");
}

}  // namespace
}  // namespace tarvo::test
