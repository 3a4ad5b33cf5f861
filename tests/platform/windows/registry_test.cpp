#include <gtest/gtest.h>
#include <windows.h>

#include "base/runtime_error.h"
#include "platform/contract.h"
#include "platform/windows/wide_text.h"

namespace tarvo::test {
namespace {

// A class of this test's own, removed at the end.
class SystemRegistry : public ::testing::Test {
 protected:
  ~SystemRegistry() override {
    ::RegDeleteTreeW(HKEY_CLASSES_ROOT, Wide(name).c_str());
    ::RegDeleteTreeW(HKEY_CURRENT_USER, Settings(L"").c_str());
  }

  // The key of the user's program settings that belong to an application of the test's own.
  std::wstring Settings(const std::wstring& section) const {
    const std::wstring application = LR"(Software\VB and VBA Program Settings\)" + Wide(name);
    return section.empty() ? application : application + L'\\' + section;
  }
  void MakeSettings(const std::wstring& section) const {
    HKEY key = nullptr;
    ASSERT_EQ(::RegCreateKeyExW(HKEY_CURRENT_USER, Settings(section).c_str(), 0, nullptr, 0,
                                KEY_ALL_ACCESS, nullptr, &key, nullptr),
              ERROR_SUCCESS);
    ASSERT_EQ(::RegSetValueExW(key, L"Port", 0, REG_SZ, reinterpret_cast<const BYTE*>(L"1"), 4),
              ERROR_SUCCESS);
    ::RegCloseKey(key);
  }
  bool HasSettings(const std::wstring& section) const {
    HKEY key = nullptr;
    const LSTATUS code =
        ::RegOpenKeyExW(HKEY_CURRENT_USER, Settings(section).c_str(), 0, KEY_READ, &key);
    if (key) ::RegCloseKey(key);
    return code == ERROR_SUCCESS;
  }
  int ErrorOfDeleting(std::string_view application, std::string_view section) {
    return ErrorOf([&] { platform.DeleteProgramSettings(application, section); });
  }

  const std::string name = "tarvo.test." + std::to_string(::GetCurrentProcessId());
  Platform& platform = SystemPlatform();
};

TEST_F(SystemRegistry, TellsAMissingKey) {
  const OpenedKey opened =
      platform.OpenRegistryKey(RegistryRoot::kClasses, name, RegistryAccess::kAll);
  EXPECT_EQ(opened.status, RegistryStatus::kNotFound);
  EXPECT_FALSE(opened.key);
}

TEST_F(SystemRegistry, KeepsAStringInAKeyWithItsParents) {
  const std::string path = name + "\\shell\\open\\command";
  const OpenedKey made = platform.MakeRegistryKey(RegistryRoot::kClasses, path);
  ASSERT_EQ(made.status, RegistryStatus::kDone);
  EXPECT_EQ(made.key->Query("", 1024).has_value(), false);
  const std::string value("csvview \"%1\" é", 16);
  EXPECT_EQ(made.key->SetString("", value + '\0'), RegistryStatus::kDone);
  const OpenedKey opened =
      platform.OpenRegistryKey(RegistryRoot::kClasses, path, RegistryAccess::kQuery);
  ASSERT_EQ(opened.status, RegistryStatus::kDone);
  const auto read = opened.key->Query("", 1024);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->type, RegistryType::kString);
  EXPECT_EQ(read->data, value + '\0');
  EXPECT_FALSE(opened.key->Query("", 5)) << "larger than there is room for";
  EXPECT_FALSE(opened.key->Query("other", 1024));
}

TEST_F(SystemRegistry, GivesANumberWithItsLowByteFirst) {
  HKEY key = nullptr;
  ASSERT_EQ(::RegCreateKeyExW(HKEY_CLASSES_ROOT, Wide(name).c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                              nullptr, &key, nullptr),
            ERROR_SUCCESS);
  const DWORD number = 0x01020304;
  ::RegSetValueExW(key, L"n", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), 4);
  ::RegCloseKey(key);
  const OpenedKey opened =
      platform.OpenRegistryKey(RegistryRoot::kClasses, name, RegistryAccess::kQuery);
  ASSERT_TRUE(opened.key);
  const auto read = opened.key->Query("n", 1024);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->type, RegistryType::kNumber);
  EXPECT_EQ(read->data, "\x04\x03\x02\x01");
}

TEST_F(SystemRegistry, DeletesASectionOfAnApplicationsSettingsOrAllOfThem) {
  MakeSettings(L"Meter");
  MakeSettings(L"Tide Gauge");
  EXPECT_EQ(ErrorOfDeleting(name, "Meter"), 0);
  EXPECT_FALSE(HasSettings(L"Meter"));
  EXPECT_TRUE(HasSettings(L"Tide Gauge"));
  EXPECT_EQ(ErrorOfDeleting(name, ""), 0);
  EXPECT_FALSE(HasSettings(L""));
}

TEST_F(SystemRegistry, RaisesAnErrorForSettingsThatAreNotThere) {
  EXPECT_EQ(ErrorOfDeleting(name, ""), 5);
  MakeSettings(L"Meter");
  EXPECT_EQ(ErrorOfDeleting(name, "Other"), 5);
  EXPECT_TRUE(HasSettings(L"Meter"));
}

TEST_F(SystemRegistry, NeverDeletesTheSettingsOfOtherApplications) {
  MakeSettings(L"Meter");
  EXPECT_EQ(ErrorOfDeleting("", ""), 5);
  EXPECT_EQ(ErrorOfDeleting("", name), 5);
  EXPECT_EQ(ErrorOfDeleting("nobody\\..\\" + name, ""), 5);
  EXPECT_EQ(ErrorOfDeleting(name + "\\Meter", ""), 5);
  EXPECT_EQ(ErrorOfDeleting("other", "..\\" + name), 5);
  EXPECT_TRUE(HasSettings(L"Meter"));
}

}  // namespace
}  // namespace tarvo::test
