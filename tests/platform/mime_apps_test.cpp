#include "platform/linux/mime_apps.h"

#include <gtest/gtest.h>

#include "mime_folders.h"

namespace tarvo::test {
namespace {

class MimeApps : public ::testing::Test, protected MimeFolders {
 protected:
  void SetUp() override {
    for (const char* name : {"a.desktop", "b.desktop", "c.desktop"}) Install(name, "viewer %f");
  }
  std::string Default(std::string_view kept = {}) const {
    return DefaultApplication("text/csv", kept);
  }
};

constexpr const char* kDefaultA = "[Default Applications]\ntext/csv=a.desktop\n";
constexpr const char* kDefaultB = "[Default Applications]\ntext/csv=b.desktop;\n";

TEST_F(MimeApps, WithoutAnyFileHaveNoDefault) { EXPECT_EQ(Default(), ""); }

// Each file is written while all that come after it name another application.
TEST_F(MimeApps, AreReadInTheOrderOfTheStandard) {
  desktop.Set("Ubuntu:GNOME");
  const char* files[] = {
      "data-b/applications/mimeapps.list",
      "data-b/applications/gnome-mimeapps.list",
      "data-b/applications/ubuntu-mimeapps.list",
      "data/applications/mimeapps.list",
      "data/applications/gnome-mimeapps.list",
      "data/applications/ubuntu-mimeapps.list",
      "own-data/applications/mimeapps.list",
      "own-data/applications/gnome-mimeapps.list",
      "own-data/applications/ubuntu-mimeapps.list",
      "etc-b/mimeapps.list",
      "etc-b/gnome-mimeapps.list",
      "etc-b/ubuntu-mimeapps.list",
      "etc-a/mimeapps.list",
      "etc-a/gnome-mimeapps.list",
      "etc-a/ubuntu-mimeapps.list",
      "config/mimeapps.list",
      "config/gnome-mimeapps.list",
      "config/ubuntu-mimeapps.list",
  };
  for (const char* file : files) {
    home.WriteFile(file, kDefaultA);
    EXPECT_EQ(Default(), "a.desktop") << file;
    home.WriteFile(file, kDefaultB);
    EXPECT_EQ(Default(), "b.desktop") << file;
  }
}

TEST_F(MimeApps, OfDesktopsThatDoNotRunDoNotCount) {
  desktop.Set("KDE");
  home.WriteFile("config/gnome-mimeapps.list", kDefaultA);
  home.WriteFile("config/KDE-mimeapps.list", kDefaultA);
  EXPECT_EQ(Default(), "");
  home.WriteFile("mimeapps.list", kDefaultA);
  for (const char* name : {"../", "/", ":::", "x/../.."}) {
    desktop.Set(name);
    EXPECT_EQ(Default(), "") << name;
  }
}

TEST_F(MimeApps, FollowTheVariablesOfTheirFoldersAndTheirStandardValues) {
  home.WriteFile(".config/mimeapps.list", kDefaultA);
  InstallIn(".local/share", "own.desktop", "viewer");
  for (const auto& unset : {std::optional<std::string>(), std::optional<std::string>(""),
                            std::optional<std::string>("relative")}) {
    configHome.Set(unset);
    dataHome.Set(unset);
    home.WriteFile(".config/mimeapps.list", "[Default Applications]\ntext/csv=own.desktop\n");
    EXPECT_EQ(Default(), "own.desktop") << unset.value_or("none");
  }
}

TEST_F(MimeApps, SkipWhatIsNotInstalled) {
  Configure("[Default Applications]\ntext/csv=gone.desktop;away.desktop;b.desktop;a.desktop;\n");
  EXPECT_EQ(Default(), "b.desktop");
  Configure("[Default Applications]\ntext/csv=gone.desktop;\n");
  EXPECT_EQ(Default(), "");
  home.WriteFile("etc-a/mimeapps.list", kDefaultA);
  EXPECT_EQ(Default(), "a.desktop") << "that of the next file";
}

TEST_F(MimeApps, KeepOneThatIsNotInstalledWhenTheUsersOwnFilesNameIt) {
  const char* both = "[Default Applications]\ntext/csv=gone.desktop;kept.desktop;a.desktop;\n";
  Configure(both);
  EXPECT_EQ(Default("kept.desktop"), "kept.desktop");
  EXPECT_EQ(Default("other.desktop"), "a.desktop");
  Configure("[Default Applications]\ntext/csv=a.desktop;kept.desktop;\n");
  EXPECT_EQ(Default("kept.desktop"), "a.desktop") << "one that is installed stands before it";
  Configure("");
  home.WriteFile("etc-a/mimeapps.list", both);
  EXPECT_EQ(Default("kept.desktop"), "a.desktop") << "the system's files are not the user's choice";
  desktop.Set("LXDE");
  home.WriteFile("config/lxde-mimeapps.list", both);
  EXPECT_EQ(Default("kept.desktop"), "kept.desktop");
}

TEST_F(MimeApps, AreNoDefaultsWhenTheyHaveBeenRemoved) {
  const std::string removed = "[Removed Associations]\ntext/csv=a.desktop;\n";
  Configure(kDefaultA + removed);
  EXPECT_EQ(Default(), "");
  EXPECT_EQ(Default("a.desktop"), "") << "for one that is kept too";
  Configure(kDefaultA + removed + "[Added Associations]\ntext/csv=a.desktop\n");
  EXPECT_EQ(Default(), "a.desktop") << "added again in the same file";
  Configure(removed);
  home.WriteFile("etc-a/mimeapps.list", kDefaultA);
  EXPECT_EQ(Default(), "") << "removed in a file before";
  Configure(kDefaultA);
  home.WriteFile("etc-a/mimeapps.list", removed);
  EXPECT_EQ(Default(), "a.desktop") << "removed in a file behind";
  desktop.Set("KDE");
  Configure(removed);
  home.WriteFile("config/kde-mimeapps.list", kDefaultA);
  EXPECT_EQ(Default(), "") << "the general file removes for the folder";
  Configure("");
  home.WriteFile("config/kde-mimeapps.list", kDefaultA + removed);
  EXPECT_EQ(Default(), "a.desktop") << "a desktop's file cannot remove";
}

TEST_F(MimeApps, WithoutADefaultAreThoseAddedThenThoseThatListTheType) {
  home.WriteFile("data/applications/mimeinfo.cache",
                 "[MIME Cache]\ntext/csv=gone.desktop;c.desktop;b.desktop;\n");
  EXPECT_EQ(Default(), "c.desktop");
  Configure("[Removed Associations]\ntext/csv=c.desktop\n");
  EXPECT_EQ(Default(), "b.desktop");
  Configure("[Added Associations]\ntext/csv=gone.desktop;a.desktop;\n");
  EXPECT_EQ(Default(), "a.desktop");
  Configure("[Removed Associations]\ntext/csv=a.desktop;\n");
  home.WriteFile("etc-a/mimeapps.list", "[Added Associations]\ntext/csv=a.desktop;\n");
  EXPECT_EQ(Default(), "c.desktop") << "removed before it was added";
}

TEST_F(MimeApps, AreNotThoseOfACacheThatAnEarlierFolderHides) {
  home.WriteFile("data/applications/mimeinfo.cache", "[MIME Cache]\ntext/csv=c.desktop;\n");
  InstallIn("own-data", "c.desktop", "another program");
  EXPECT_EQ(Default(), "");
  home.WriteFile("own-data/applications/mimeinfo.cache", "[MIME Cache]\ntext/csv=c.desktop;\n");
  EXPECT_EQ(Default(), "c.desktop");
}

struct MimeAppsFile {
  const char* text;
  const char* found;
};

TEST_F(MimeApps, AreFoundInGoodAndBadFiles) {
  const MimeAppsFile files[] = {
      {"", ""},
      {"[Default Applications]", ""},
      {"[Default Applications]\ntext/csv=a.desktop", "a.desktop"},
      {"[Default Applications]\r\ntext/csv=a.desktop;\r\n", "a.desktop"},
      {"  [Default Applications]  \n\t text/csv \t= a.desktop ; b.desktop\n", "a.desktop"},
      {"[Default Applications]\ntext/csv=;;b.desktop\n", "b.desktop"},
      {"[Default Applications]\ntext/csv=\n", ""},
      {"[Default Applications]\ntext/csv=a.desktop\ntext/csv=b.desktop\n", "b.desktop"},
      {"[Default Applications]\ntext/csv=a.desktop\n[X]\n[Default Applications]\nimage/png=b\n",
       "a.desktop"},
      {"text/csv=a.desktop\n", ""},
      {"[default applications]\ntext/csv=a.desktop\n", ""},
      {"[Default Applications]\nTEXT/CSV=a.desktop\n", ""},
      {"[Default Applications]\n#text/csv=a.desktop\n", ""},
      {"[Default Applications]\nxtext/csv=a.desktop\ntext/csvx=b.desktop\n", ""},
      {"[Default Applications]\n[broken\ntext/csv=a.desktop\n", ""},
      {"[Default Applications] no\ntext/csv=a.desktop\n", ""},
      {"[Default Applications]\nno sign\n=\n==\n]\n\xff\xfe\ntext/csv=a.desktop\n", "a.desktop"},
      {"\xef\xbb\xbf[X]\n[Default Applications]\ntext/csv=a.desktop\n", "a.desktop"},
      {"[Default Applications]\ntext/csv=../a.desktop;/etc/a.desktop;b.desktop\n", "b.desktop"},
  };
  for (const MimeAppsFile& file : files) {
    Configure(file.text);
    EXPECT_EQ(Default(), file.found) << file.text;
  }
}

TEST_F(MimeApps, AreNotFoundInWhatIsNoFile) {
  home.MakeFolder("config/mimeapps.list");
  home.WriteFile("etc-a/mimeapps.list", kDefaultA);
  EXPECT_EQ(Default(), "a.desktop");
}

}  // namespace
}  // namespace tarvo::test
