#include <map>

#include "support/working_run.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;

// What can be seen of a file or folder from outside: kind and mode, the time of its last change,
// what it holds.
struct Seen {
  fs::perms mode;
  fs::file_time_type changed;
  std::string content;
  bool operator==(const Seen&) const = default;
};

class RemovingADriverFullOfLinks : public WorkingRun {
 protected:
  RemovingADriverFullOfLinks() {
    frontEnd.answer = Answer::kYes;
    folder.WriteFile("outside/kept.csv", "a download of another device");
    folder.WriteFile("outside/locked", "kept");
    folder.WriteFile("outside/deep/deeper/kept.txt", "kept");
    folder.MakeFolder("outside/empty");
    fs::permissions(folder / "outside/locked", fs::perms(0444));
    fs::permissions(folder / "outside/deep", fs::perms(0555));
    for (const char* name : {"", "/Data", "/Data/2025", "/.hidden"})
      Driver("Meter" + std::string(name));
    DriverFile("Meter/Data/own.csv");
    DriverFile("Meter/own");
  }
  ~RemovingADriverFullOfLinks() override {
    fs::permissions(folder / "outside/deep", fs::perms(0755));
  }

  std::map<std::string, Seen> Outside() const {
    std::map<std::string, Seen> seen;
    const auto look = [&](const fs::path& path) {
      const fs::file_status status = fs::symlink_status(path);
      seen[path] = {status.permissions(), fs::last_write_time(path),
                    fs::is_regular_file(status) ? ReadFileAt(path) : std::string()};
    };
    look(folder / "outside");
    for (const auto& entry : fs::recursive_directory_iterator(folder / "outside"))
      look(entry.path());
    return seen;
  }

  // A link in the driver's folder, in one of its folders and under a name of every kind in turn.
  void Link(int number, const std::string& target) const {
    static const std::vector<std::string> kFolders = {"", "Data/", "Data/2025/", ".hidden/"};
    static const std::vector<std::string> kNames = {"", ".csv", ".exe", " with blanks", ".hvd"};
    const auto at = static_cast<std::size_t>(number);
    const std::string hidden = number % 7 == 0 ? "." : "";
    fs::create_symlink(target,
                       DriverPath("Meter/" + kFolders[at % kFolders.size()] + hidden + "link" +
                                  std::to_string(number) + kNames[at % kNames.size()]));
  }

  std::vector<std::string> Targets() const {
    return {
        folder / "outside/kept.csv",       // a file
        folder / "outside/locked",         // a file whose attributes must stay
        folder / "outside",                // a folder
        folder / "outside/deep",           // a folder that cannot be written
        folder / "outside/empty",          // a folder that could be removed
        "../../../../../../outside",       // relative, out of most folders
        "nowhere",                         // broken
        folder / "gone/too",               // broken, absolute
        ".",                               // a cycle of one step
        "..",                              // a cycle through the folder above
        "/",                               // everything
        DriverPath("Meter"),               // the driver itself
        DriverPath("Meter/Data/own.csv"),  // a file that goes too
        DriverPath("Meter/link14"),        // another link
        "/proc/self/root",                 // a link of the system's own
        "/dev/null",                       // a device
    };
  }
};

TEST_F(RemovingADriverFullOfLinks, TouchesNothingOutsideForTwoHundredOfEveryKind) {
  const std::vector<std::string> targets = Targets();
  for (int i = 0; i < 200; ++i) Link(i, targets[static_cast<std::size_t>(i) % targets.size()]);
  fs::create_symlink(DriverPath("Meter/ring2"), DriverPath("Meter/ring1"));
  fs::create_symlink(DriverPath("Meter/ring1"), DriverPath("Meter/ring2"));
  const auto before = Outside();
  Start();
  Click("Meter");
  Window().mnuFileDelete_Click();
  EXPECT_FALSE(Exists(DriverPath("Meter")));
  EXPECT_EQ(Outside(), before);
}

TEST_F(RemovingADriverFullOfLinks, RemovesOnlyTheDriverThatIsALinkToAnother) {
  Link(0, folder / "outside");
  fs::create_directory_symlink(DriverPath("Meter"), DriverPath("Alias"));
  const auto before = Outside();
  Start();
  Click("Alias");
  Window().mnuFileDelete_Click();
  EXPECT_FALSE(Exists(DriverPath("Alias")));
  EXPECT_TRUE(Exists(DriverPath("Meter/Data/own.csv")));
  EXPECT_EQ(Outside(), before);
}

}  // namespace
}  // namespace tarvo::test
