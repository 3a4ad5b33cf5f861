#include "platform/special_folder.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include <filesystem>

#include "environment.h"
#include "support/hand_moved_platform.h"
#include "support/temporary_folder.h"

namespace tarvo::test {
namespace {

TEST(CommonDocuments, AreWhereTheEnvironmentSays) {
  EnvironmentVariable variable("TARVO_COMMON_DOCUMENTS", "/some/place");
  EXPECT_EQ(SystemPlatform().SpecialFolder(kCommonDocuments), "/some/place");
  variable.Set("/some/place///");
  EXPECT_EQ(SystemPlatform().SpecialFolder(kCommonDocuments), "/some/place");
  variable.Set("/");
  EXPECT_EQ(SystemPlatform().SpecialFolder(kCommonDocuments), "/");
}

TEST(CommonDocuments, OfARelativePathStayWhereTheProgramWasStarted) {
  const std::string start = std::filesystem::current_path();
  const EnvironmentVariable variable("TARVO_COMMON_DOCUMENTS", "portable/data");
  EXPECT_EQ(SystemPlatform().SpecialFolder(kCommonDocuments), start + "/portable/data");
  const TemporaryFolder folder;
  SystemPlatform().ChangeCurrentFolder(folder.Path());
  EXPECT_EQ(SystemPlatform().SpecialFolder(kCommonDocuments), start + "/portable/data");
}

TEST(CommonDocuments, WithoutTheVariableAreTheSharedFolderOrNone) {
  const EnvironmentVariable variable("TARVO_COMMON_DOCUMENTS", "");
  const bool shared = ::access("/var/lib/tarvo/documents", W_OK | X_OK) == 0;
  EXPECT_EQ(SystemPlatform().SpecialFolder(kCommonDocuments).value_or("none"),
            shared ? "/var/lib/tarvo/documents" : "none");
}

TEST(SpecialFolders, OfOtherNumbersAreUnknown) {
  for (const int identifier : {0, 4, 6, 45, 47, -1}) {
    EXPECT_EQ(SystemPlatform().SpecialFolder(identifier), std::nullopt) << identifier;
  }
}

// A home of the test's own with the configuration that it writes.
class UserDocuments : public ::testing::Test {
 protected:
  void Configure(std::string_view lines) const { home.WriteFile(".config/user-dirs.dirs", lines); }
  std::optional<std::string> Documents() const {
    return SystemPlatform().SpecialFolder(kPersonalDocuments);
  }

  const TemporaryFolder home;
  EnvironmentVariable homeVariable{"HOME", home.Path()};
  EnvironmentVariable configVariable{"XDG_CONFIG_HOME", std::nullopt};
};

TEST_F(UserDocuments, AreInTheHomeFolderUnlessConfigured) {
  EXPECT_EQ(Documents(), home / "Documents");
  Configure("XDG_MUSIC_DIR=\"$HOME/Musik\"\n");
  EXPECT_EQ(Documents(), home / "Documents");
}

TEST_F(UserDocuments, AreWhereTheConfigurationSays) {
  Configure(
      "# written by hand\nXDG_MUSIC_DIR=\"$HOME/Musik\"\nXDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n");
  EXPECT_EQ(Documents(), home / "Dokumente");
  Configure("XDG_DOCUMENTS_DIR=\"/srv/papers/\"");
  EXPECT_EQ(Documents(), "/srv/papers");
  Configure("  \tXDG_DOCUMENTS_DIR=\"$HOME/My Papers\" # in English\r\n");
  EXPECT_EQ(Documents(), home / "My Papers");
  Configure("XDG_DOCUMENTS_DIR=\"$HOME\"\n");
  EXPECT_EQ(Documents(), home.Path());
  Configure("XDG_DOCUMENTS_DIR=\"$HOME/\"\n");
  EXPECT_EQ(Documents(), home.Path());
}

TEST_F(UserDocuments, MayHaveEscapedCharactersInTheirName) {
  Configure(R"(XDG_DOCUMENTS_DIR="$HOME/a \"b\" \$c \\d")");
  EXPECT_EQ(Documents(), home / R"(a "b" $c \d)");
}

TEST_F(UserDocuments, AreWhereTheLastUsableLineSays) {
  Configure("XDG_DOCUMENTS_DIR=\"/one\"\nXDG_DOCUMENTS_DIR=\"/two\"\nXDG_DOCUMENTS_DIR=\"\"\n");
  EXPECT_EQ(Documents(), "/two");
}

TEST_F(UserDocuments, IgnoreCommentsAndMalformedLines) {
  for (const char* line :
       {"#XDG_DOCUMENTS_DIR=\"/bad\"", "XDG_DOCUMENTS_DIR=/bad", "XDG_DOCUMENTS_DIR=\"bad\"",
        "XDG_DOCUMENTS_DIR=\"$HOMEbad\"", "XDG_DOCUMENTS_DIR=\"\"", "XDG_DOCUMENTS_DIR=\"",
        "XDG_DOCUMENTS_DIR", "MY_XDG_DOCUMENTS_DIR=\"/bad\"", "XDG_DOCUMENTS_DIRX=\"/bad\"", "\\",
        "XDG_DOCUMENTS_DIR=\"\\"}) {
    Configure(line);
    EXPECT_EQ(Documents(), home / "Documents") << line;
  }
}

TEST_F(UserDocuments, DoNotNeedTheConfigurationToBeAFile) {
  home.MakeFolder(".config/user-dirs.dirs");
  EXPECT_EQ(Documents(), home / "Documents");
}

TEST_F(UserDocuments, FollowAnAbsoluteConfigurationFolder) {
  home.WriteFile("other/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"/other\"\n");
  configVariable.Set(home / "other");
  EXPECT_EQ(Documents(), "/other");
  configVariable.Set("other");
  EXPECT_EQ(Documents(), home / "Documents") << "a relative one does not count";
}

TEST_F(UserDocuments, WithoutAHomeVariableAreInTheHomeOfTheUsersAccount) {
  configVariable.Set(home / "no configuration");
  const passwd* account = ::getpwuid(::getuid());
  ASSERT_TRUE(account);
  for (const auto& value : {std::optional<std::string>(), std::optional<std::string>("")}) {
    homeVariable.Set(value);
    EXPECT_EQ(Documents(), std::string(account->pw_dir) + "/Documents");
  }
}

TEST(GetSpecialFolder, EndsInASeparator) {
  HandMovedPlatform platform;
  platform.specialFolders = {{kCommonDocuments, "/docs"}, {kPersonalDocuments, "/"}};
  EXPECT_EQ(GetSpecialFolder(platform, kCommonDocuments), "/docs/");
  EXPECT_EQ(GetSpecialFolder(platform, kPersonalDocuments), "/");
  EXPECT_EQ(GetSpecialFolder(platform, 7), "/") << "the separator alone when there is none";
}

}  // namespace
}  // namespace tarvo::test
