// Held against the desktop's own tools: "xdg-mime" of xdg-utils, and "gio" of GLib where it is
// installed.

#include <gtest/gtest.h>
#include <stdio.h>

#include <memory>
#include <string>

#include "contract.h"
#include "mime_folders.h"
#include "platform/linux/mime_apps.h"
#include "platform/linux/xdg_folders.h"

namespace tarvo::test {
namespace {

std::string OutputOf(const std::string& command) {
  const std::unique_ptr<FILE, decltype(&::pclose)> pipe(::popen(command.c_str(), "r"), &::pclose);
  std::string output;
  char buffer[4096];
  while (pipe && ::fgets(buffer, sizeof buffer, pipe.get())) output += buffer;
  return output;
}

// The default application of text/csv by each tool.
std::string ByXdgMime() {
  std::string output = OutputOf("xdg-mime query default text/csv");
  if (output.ends_with('\n')) output.pop_back();
  return output;
}

std::string ByGio() {
  const std::string output = OutputOf("LC_ALL=C gio mime text/csv");
  const std::string first = output.substr(0, output.find('\n'));
  const std::size_t sign = first.rfind(": ");
  return sign == first.npos ? "" : first.substr(sign + 2);
}

class MimeTools : public ::testing::Test, protected MimeFolders {
 protected:
  void SetUp() override {
    ASSERT_NE(FindProgram("xdg-mime"), "") << "xdg-utils must be installed";
    for (const char* name : {"a.desktop", "b.desktop", "foo/c.desktop", "csvFile.desktop"}) {
      Install(name, "sh %f", "MimeType=text/csv;\n");
    }
  }
  const bool hasGio = !FindProgram("gio").empty();

 private:
  // Neither tool asks a display or a session bus which desktop runs.
  EnvironmentVariable genericDesktop_{"XDG_CURRENT_DESKTOP", "X-Generic"};
  EnvironmentVariable display_{"DISPLAY", std::nullopt};
  EnvironmentVariable bus_{"DBUS_SESSION_BUS_ADDRESS", "none"};
};

struct FileOfTest {
  const char* name;
  const char* text;
};

TEST_F(MimeTools, FindTheSameDefaultApplication) {
  // Each file is written beside those before it and comes first.
  const FileOfTest files[] = {
      {"data/applications/mimeinfo.cache", "[MIME Cache]\ntext/csv=b.desktop;a.desktop;\n"},
      {"data/applications/mimeapps.list", "[Default Applications]\ntext/csv=a.desktop\n"},
      {"own-data/applications/mimeapps.list",
       "[Default Applications]\ntext/csv=b.desktop;gone.desktop;\n"},
      {"etc-b/mimeapps.list", "[Default Applications]\na/b=c\ntext/csv=foo-c.desktop;\n"},
      {"etc-a/x-generic-mimeapps.list", "[Default Applications]\ntext/csv=gone.desktop\n"},
      {"etc-a/mimeapps.list",
       "[X]\ntext/csv=b.desktop\n[Default Applications]\ntext/csv=a.desktop\n"},
      {"config/mimeapps.list", "[Default Applications]\ntext/csv=b.desktop;a.desktop;\n"},
      {"config/x-generic-mimeapps.list", "[Default Applications]\ntext/csv=csvFile.desktop;\n"},
  };
  for (const FileOfTest& file : files) {
    home.WriteFile(file.name, file.text);
    const std::string found = DefaultApplication("text/csv");
    EXPECT_NE(found, "") << file.name;
    EXPECT_EQ(found, ByXdgMime()) << file.name;
    if (hasGio) {
      EXPECT_EQ(found, ByGio()) << file.name;
    }
  }
}

// "xdg-mime" looks at the first application of a list only.
TEST_F(MimeTools, SkipWhatIsNotInstalled) {
  if (!hasGio) GTEST_SKIP() << "gio is not installed";
  home.WriteFile("etc-a/mimeapps.list", "[Default Applications]\ntext/csv=a.desktop\n");
  Configure("[Default Applications]\ntext/csv=gone.desktop;b.desktop;\n");
  EXPECT_EQ(DefaultApplication("text/csv"), "b.desktop");
  EXPECT_EQ(ByGio(), "b.desktop");
}

// What was in the user's own file, and whether GLib reads such a file at all.
struct StateBefore {
  const char* text;
  bool isWellFormed;
};

TEST_F(MimeTools, FindTheApplicationThatWasMadeTheDefault) {
  const StateBefore states[] = {
      {"", true},
      {"[Default Applications]\n", true},
      {"[Default Applications]\ntext/csv=a.desktop;b.desktop;\n", true},
      {"[Default Applications]\r\ntext/csv=a.desktop\r\na/b=c\r\n", true},
      {"[Default Applications]\ntext/csv=a.desktop\ntext/csv=b.desktop\n", true},
      {"[Default Applications]\n\ttext/csv = a.desktop", true},
      {"[Default Applications]\na/b=c\n[X]\ny=z\n[Default Applications]\ntext/csv=a.desktop\n",
       true},
      {" [Default Applications]\ntext/csv=a.desktop\n", true},
      {"# mine\n\n[Added Associations]\ntext/csv=a.desktop;b.desktop;\n", true},
      {"[Removed Associations]\ntext/csv=csvFile.desktop;\n", true},
      {"no sign\n[broken\ntext/csv=a.desktop\n\xff\xfe", false},
  };
  for (const StateBefore& state : states) {
    for (const bool isInDesktopsFile : {false, true}) {
      Configure(state.text);
      home.WriteFile("config/x-generic-mimeapps.list",
                     isInDesktopsFile ? "[Default Applications]\ntext/csv=b.desktop\n" : "");
      const OpenedKey opened = SystemPlatform().MakeRegistryKey(RegistryRoot::kClasses, ".csv");
      ASSERT_TRUE(opened.key) << state.text;
      ASSERT_EQ(opened.key->SetString("", "csvFile"), RegistryStatus::kDone) << state.text;
      EXPECT_EQ(DefaultApplication("text/csv"), "csvFile.desktop") << state.text;
      EXPECT_EQ(ByXdgMime(), "csvFile.desktop") << state.text;
      if (hasGio && state.isWellFormed) {
        EXPECT_EQ(ByGio(), "csvFile.desktop") << state.text;
      }
    }
  }
}

TEST_F(MimeTools, WriteWhatIsReadHere) {
  Configure("[Added Associations]\na/b=c;\n");
  OutputOf("xdg-mime default a.desktop text/csv");
  EXPECT_EQ(DefaultApplication("text/csv"), "a.desktop");
  if (!hasGio) return;
  OutputOf("gio mime text/csv b.desktop");
  EXPECT_EQ(DefaultApplication("text/csv"), "b.desktop");
}

}  // namespace
}  // namespace tarvo::test
