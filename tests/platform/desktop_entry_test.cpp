#include "platform/linux/desktop_entry.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "mime_folders.h"

namespace tarvo::test {
namespace {

class DesktopEntries : public ::testing::Test, protected MimeFolders {
 protected:
  // The command of an identifier; "none" when there is no such application.
  static std::string Exec(std::string_view id) {
    const std::optional<DesktopEntry> entry = FindDesktopEntry(id);
    return entry ? entry->exec : "none";
  }
  void Write(std::string_view text) const { home.WriteFile("data/applications/x.desktop", text); }
};

TEST_F(DesktopEntries, AreThoseOfTheFirstFolderThatHasTheFile) {
  InstallIn("data-b", "x.desktop", "third");
  EXPECT_EQ(Exec("x.desktop"), "third");
  InstallIn("data", "x.desktop", "second");
  EXPECT_EQ(Exec("x.desktop"), "second");
  InstallIn("own-data", "x.desktop", "first");
  EXPECT_EQ(Exec("x.desktop"), "first");
  EXPECT_EQ(FindDesktopEntry("x.desktop")->dataFolder, home / "own-data");
}

TEST_F(DesktopEntries, OfSubfoldersHaveDashesInTheirIdentifiers) {
  Install("foo/bar.desktop", "in foo");
  EXPECT_EQ(Exec("foo-bar.desktop"), "in foo");
  Install("a-b/c/d-e.desktop", "deep");
  EXPECT_EQ(Exec("a-b-c-d-e.desktop"), "deep");
  Install("foo-bar.desktop", "beside foo");
  EXPECT_EQ(Exec("foo-bar.desktop"), "beside foo");
  EXPECT_EQ(Exec("foo/bar.desktop"), "none");
}

TEST_F(DesktopEntries, StandNowhereElse) {
  home.WriteFile("data/out.desktop", "[Desktop Entry]\nExec=outside\n");
  home.MakeFolder("data/applications");
  for (const char* id : {"..-out.desktop", "../out.desktop", "-out.desktop", ".-..-out.desktop", "",
                         "-", "missing.desktop", "foo-"}) {
    EXPECT_EQ(Exec(id), "none") << id;
  }
}

TEST_F(DesktopEntries, ThatAreHiddenCountAsDeleted) {
  InstallIn("data-b", "x.desktop", "viewer");
  InstallIn("data", "x.desktop", "viewer", "Hidden=true\n");
  EXPECT_EQ(Exec("x.desktop"), "none");
  InstallIn("data", "x.desktop", "viewer", "Hidden=false\nNoDisplay=true\n");
  EXPECT_EQ(Exec("x.desktop"), "viewer");
}

TEST_F(DesktopEntries, NeedTheProgramThatTheyTry) {
  Install("x.desktop", "viewer", "TryExec=/bin/sh\n");
  EXPECT_EQ(Exec("x.desktop"), "viewer");
  Install("x.desktop", "viewer", "TryExec=sh\n");
  EXPECT_EQ(Exec("x.desktop"), "viewer");
  for (const char* program : {"/bin/no such program", "no-such-program", "/etc/passwd"}) {
    Install("x.desktop", "viewer", "TryExec=" + std::string(program) + "\n");
    EXPECT_EQ(Exec("x.desktop"), "none") << program;
  }
}

TEST_F(DesktopEntries, GiveTheCommandWithItsEscapesReplaced) {
  Write(R"([Desktop Entry]
Exec= wine "C:\\\\Program Files\\\\csvview.exe"\s%F\tx\x
)");
  EXPECT_EQ(Exec("x.desktop"), "wine \"C:\\\\Program Files\\\\csvview.exe\" %F\tx\\x");
  Write("[Desktop Entry]\nExec=end\\");
  EXPECT_EQ(Exec("x.desktop"), "end\\");
}

TEST_F(DesktopEntries, TakeTheCommandFromTheirOwnGroupOnly) {
  Write(
      "Exec=before\n[Desktop Action new]\nExec=action\n[Desktop Entry]\nName=x\n"
      "Exec[de]=translated\n# Exec=comment\nExec=right\n[Desktop Action other]\nExec=other\n");
  EXPECT_EQ(Exec("x.desktop"), "right");
  for (const char* text : {"", "[Desktop Entry]", "[Desktop Entry]\nExec=\n", "Exec=a\n",
                           "[Desktop Entry\nExec=a\n", "[Other]\nExec=a\n", "\xff\xfe"}) {
    Write(text);
    EXPECT_EQ(Exec("x.desktop"), "none") << text;
  }
}

TEST_F(DesktopEntries, NeedNotBeFiles) {
  home.MakeFolder("data/applications/x.desktop");
  EXPECT_EQ(Exec("x.desktop"), "none");
  std::filesystem::create_symlink("x.desktop", home / "data/applications/y.desktop");
  std::filesystem::create_symlink("nowhere", home / "data/applications/z.desktop");
  EXPECT_EQ(Exec("y.desktop"), "none");
  EXPECT_EQ(Exec("z.desktop"), "none");
}

}  // namespace
}  // namespace tarvo::test
