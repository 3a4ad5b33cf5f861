#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <memory>

#include "child_process.h"
#include "contract.h"
#include "mime_folders.h"
#include "platform/platform.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kCapacity = 1024;
constexpr const char* kCommandPath = "csvFile\\shell\\open\\command";

OpenedKey Open(std::string_view path, RegistryAccess access = RegistryAccess::kQuery) {
  return SystemPlatform().OpenRegistryKey(RegistryRoot::kClasses, path, access);
}

OpenedKey Make(std::string_view path) {
  return SystemPlatform().MakeRegistryKey(RegistryRoot::kClasses, path);
}

// The default value of a key, "none" when the key or the value cannot be had.
std::string Value(std::string_view path) {
  const OpenedKey opened = Open(path);
  EXPECT_EQ(opened.status == RegistryStatus::kDone, opened.key != nullptr);
  if (!opened.key) return "none";
  const std::optional<RegistryValue> value = opened.key->Query("", kCapacity);
  if (!value) return "none";
  EXPECT_EQ(value->type, RegistryType::kString);
  return value->data;
}

// Makes a class the one of ".csv", as who wants to be sure does: opens the key, or makes it.
RegistryStatus SetClass(std::string_view name) {
  OpenedKey opened = Open(".csv", RegistryAccess::kAll);
  if (opened.status == RegistryStatus::kNotFound) opened = Make(".csv");
  return opened.key ? opened.key->SetString("", name) : opened.status;
}

class MimeRegistry : public ::testing::Test, protected MimeFolders {};

constexpr const char* kDefault = "[Default Applications]\ntext/csv=csvFile.desktop;\n";

TEST_F(MimeRegistry, HasNoClassWithoutADefaultApplication) {
  EXPECT_EQ(Open(".csv").status, RegistryStatus::kNotFound);
  EXPECT_EQ(Open(".csv", RegistryAccess::kAll).status, RegistryStatus::kNotFound);
}

TEST_F(MimeRegistry, HasTheDefaultApplicationAsClassAndItsCommand) {
  Install("Calc.desktop", "calc --csv %U");
  Configure("[Default Applications]\ntext/csv=Calc.desktop\n");
  EXPECT_EQ(Value(".csv"), "Calc");
  EXPECT_EQ(Value("Calc\\shell\\open\\command"), "calc --csv %U");
}

TEST_F(MimeRegistry, IgnoresLetterCaseExceptThatOfAClass) {
  Install("csvFile.desktop", "CSVVIEW.EXE %f");
  Configure(kDefault);
  EXPECT_EQ(Value(".CSV"), "csvFile");
  EXPECT_EQ(Value("csvFile\\Shell\\OPEN\\Command"), "CSVVIEW.EXE %f");
  EXPECT_EQ(Value("CSVFILE\\shell\\open\\command"), "none");
}

TEST_F(MimeRegistry, HasNothingElse) {
  Install("csvFile.desktop", "csvview %f");
  Configure(kDefault);
  for (const char* path : {"", ".txt", "csv", ".csv\\", "\\.csv", "csvFile", "csvFile\\shell",
                           "csvFile\\shell\\open", "csvFile\\shell\\edit\\command",
                           "csvFile\\shell\\open\\command\\", "\\shell\\open\\command",
                           "csvFile/shell/open/command", "x\\csvFile\\shell\\open\\command"}) {
    EXPECT_EQ(Open(path).status, RegistryStatus::kNotFound) << path;
    EXPECT_EQ(Make(path).status, RegistryStatus::kAccessDenied) << path;
  }
  constexpr auto kOtherRoot = static_cast<RegistryRoot>(0x80000001);
  EXPECT_EQ(SystemPlatform().OpenRegistryKey(kOtherRoot, ".csv", RegistryAccess::kQuery).status,
            RegistryStatus::kNotFound);
  EXPECT_EQ(SystemPlatform().MakeRegistryKey(kOtherRoot, ".csv").status,
            RegistryStatus::kAccessDenied);
}

TEST_F(MimeRegistry, HasDefaultValuesOnlyThatFitWhereTheyAreWanted) {
  Install("csvFile.desktop", "csvview %f");
  Configure(kDefault);
  for (const char* path : {".csv", kCommandPath}) {
    const OpenedKey opened = Open(path);
    ASSERT_TRUE(opened.key) << path;
    const std::string value = Value(path);
    EXPECT_FALSE(opened.key->Query("Content Type", kCapacity)) << path;
    EXPECT_FALSE(opened.key->Query("", value.size() - 1)) << path;
    EXPECT_TRUE(opened.key->Query("", value.size())) << path;
  }
}

TEST_F(MimeRegistry, KeepsTheOwnClassWhenItsDesktopFileIsMissing) {
  Configure(kDefault);
  EXPECT_EQ(Value(".csv"), "csvFile");
  EXPECT_EQ(Open(kCommandPath).status, RegistryStatus::kNotFound);
  Configure("[Default Applications]\ntext/csv=other.desktop;\n");
  EXPECT_EQ(Value(".csv"), "none") << "not that of another application";
}

TEST_F(MimeRegistry, CannotWriteCommands) {
  Install("csvFile.desktop", "csvview %f");
  EXPECT_EQ(Open(kCommandPath, RegistryAccess::kAll).status, RegistryStatus::kAccessDenied);
  EXPECT_EQ(Open(kCommandPath).key->SetString("", "x"), RegistryStatus::kAccessDenied);
}

TEST_F(MimeRegistry, WritesTheDefaultApplicationAndKeepsTheRestOfTheFile) {
  Install("csvFile.desktop", "csvview %f");
  Install("other.desktop", "other");
  Configure("# mine\r\n[Default Applications]\r\ntext/csv=other.desktop\r\n\r\n[X]\r\nbroken");
  EXPECT_EQ(SetClass("csvFile"), RegistryStatus::kDone);
  EXPECT_EQ(Configuration(),
            "# mine\r\n[Default Applications]\r\ntext/csv=csvFile.desktop;\r\n\r\n[X]\r\nbroken");
  EXPECT_EQ(Value(".csv"), "csvFile");
}

TEST_F(MimeRegistry, MakesTheFileWithItsFolders) {
  configHome.Set(home / "new/deep/config");
  EXPECT_EQ(SetClass("csvFile"), RegistryStatus::kDone);
  EXPECT_EQ(home.ReadFile("new/deep/config/mimeapps.list"), kDefault);
  struct stat folder;
  ASSERT_EQ(::stat((home / "new/deep").c_str(), &folder), 0);
  EXPECT_EQ(folder.st_mode & 0777, 0700U);
  EXPECT_EQ(Value(".csv"), "csvFile");
}

TEST_F(MimeRegistry, WritesTheDesktopsOwnFileWhereThatWouldComeFirst) {
  desktop.Set("KDE:Plasma");
  Install("csvFile.desktop", "csvview %f");
  Install("other.desktop", "other");
  const std::string other = "[Default Applications]\na/b=c\ntext/csv=other.desktop\n";
  home.WriteFile("config/kde-mimeapps.list", other);
  home.WriteFile("config/plasma-mimeapps.list", "[Default Applications]\na/b=c\n");
  home.WriteFile("etc-a/kde-mimeapps.list", other);
  ASSERT_EQ(Value(".csv"), "other");
  EXPECT_EQ(SetClass("csvFile"), RegistryStatus::kDone);
  EXPECT_EQ(Value(".csv"), "csvFile");
  EXPECT_EQ(Configuration(), kDefault);
  EXPECT_EQ(home.ReadFile("config/kde-mimeapps.list"),
            "[Default Applications]\na/b=c\ntext/csv=csvFile.desktop;\n");
  EXPECT_EQ(home.ReadFile("config/plasma-mimeapps.list"), "[Default Applications]\na/b=c\n");
  EXPECT_EQ(home.ReadFile("etc-a/kde-mimeapps.list"), other);
}

TEST_F(MimeRegistry, TakesTheApplicationOutOfTheRemovedOnes) {
  Install("csvFile.desktop", "csvview %f");
  Configure("[Removed Associations]\ntext/csv=csvFile.desktop;x.desktop;\n");
  EXPECT_EQ(SetClass("csvFile"), RegistryStatus::kDone);
  EXPECT_EQ(Value(".csv"), "csvFile");
  EXPECT_EQ(Configuration(),
            "[Removed Associations]\ntext/csv=x.desktop;\n\n" + std::string(kDefault));
}

TEST_F(MimeRegistry, WritesWhatALinkLeadsTo) {
  const std::string real = home.WriteFile("dotfiles/apps", "# mine\n");
  home.MakeFolder("config");
  fs::create_symlink("../link", home / "config/mimeapps.list");
  fs::create_symlink("dotfiles/apps", home / "link");
  EXPECT_EQ(SetClass("csvFile"), RegistryStatus::kDone);
  EXPECT_TRUE(fs::is_symlink(home / "config/mimeapps.list"));
  EXPECT_TRUE(fs::is_symlink(home / "link"));
  EXPECT_EQ(ReadFileAt(real), "# mine\n\n" + std::string(kDefault));
}

TEST_F(MimeRegistry, MakesWhatALinkLeadsToWhenThatIsMissing) {
  home.MakeFolder("config");
  fs::create_symlink(home / "dotfiles/apps", home / "config/mimeapps.list");
  EXPECT_EQ(SetClass("csvFile"), RegistryStatus::kDone);
  EXPECT_TRUE(fs::is_symlink(home / "config/mimeapps.list"));
  EXPECT_EQ(home.ReadFile("dotfiles/apps"), kDefault);
}

TEST_F(MimeRegistry, CannotWriteThroughLinksInACircle) {
  home.MakeFolder("config");
  fs::create_symlink("mimeapps.list", home / "config/mimeapps.list");
  EXPECT_EQ(SetClass("csvFile"), RegistryStatus::kFailed);
  EXPECT_TRUE(fs::is_symlink(home / "config/mimeapps.list"));
}

TEST_F(MimeRegistry, KeepsTheModesOfTheFileAndLeavesNothingBeside) {
  Configure("# mine\n");
  ASSERT_EQ(::chmod((home / "config/mimeapps.list").c_str(), 0640), 0);
  const pid_t killed = ::fork();
  if (killed == 0) ::_exit(0);
  ASSERT_EQ(::waitpid(killed, nullptr, 0), killed);
  home.WriteFile("config/.mimeapps.list.tarvo-" + std::to_string(killed), "left by a killed run");
  home.WriteFile("config/.mimeapps.list.tarvo-" + std::to_string(::getpid()), "so too");
  home.WriteFile("config/.mimeapps.list.tarvo-" + std::to_string(::getppid()), "being written");
  EXPECT_EQ(SetClass("csvFile"), RegistryStatus::kDone);
  struct stat status;
  ASSERT_EQ(::stat((home / "config/mimeapps.list").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0640U);
  EXPECT_EQ(std::distance(fs::directory_iterator(home / "config"), {}), 2)
      << "the file and what another process writes";
}

TEST_F(MimeRegistry, TakesStringsThatEndInANul) {
  EXPECT_EQ(SetClass(std::string_view("csvFile\0", 8)), RegistryStatus::kDone);
  EXPECT_EQ(Configuration(), kDefault);
  EXPECT_EQ(SetClass(std::string_view("other\0\0", 7)), RegistryStatus::kFailed) << "one only";
  EXPECT_EQ(Configuration(), kDefault);
}

TEST_F(MimeRegistry, RefusesClassesThatNoListCanHold) {
  Configure(kDefault);
  for (const char* name : {"", "a;b", "a\nb", "../x", "a\\b"}) {
    EXPECT_EQ(SetClass(name), RegistryStatus::kFailed) << name;
    EXPECT_EQ(Configuration(), kDefault) << name;
  }
}

TEST_F(MimeRegistry, WritesTheDefaultValueAloneAndOnlyWhereAllMayBeDone) {
  Configure(kDefault);
  EXPECT_EQ(Open(".csv", RegistryAccess::kAll).key->SetString("Content Type", "text/csv"),
            RegistryStatus::kAccessDenied);
  EXPECT_EQ(Open(".csv").key->SetString("", "other"), RegistryStatus::kAccessDenied);
  EXPECT_EQ(Configuration(), kDefault);
}

TEST_F(MimeRegistry, CannotWriteWhereAFolderHasTheFilesName) {
  home.MakeFolder("config/mimeapps.list/inside");
  EXPECT_EQ(SetClass("csvFile"), RegistryStatus::kFailed);
  EXPECT_TRUE(fs::is_directory(home / "config/mimeapps.list/inside"));
}

TEST_F(MimeRegistry, HasNoClassWithoutAnyFolderOfTheUsers) {
  configHome.Set("relative");
  homeVariable.Set("also relative");
  EXPECT_EQ(Open(".csv").status, RegistryStatus::kNotFound);
  EXPECT_EQ(Make(".csv").status, RegistryStatus::kFailed);
}

// The same for an ordinary user, to whom permissions apply; the status as an error's number, of
// which 0 stands for none.
int StatusAsOrdinaryUser(const std::function<RegistryStatus()>& step) {
  return ErrorAsOrdinaryUser([&] {
    const RegistryStatus status = step();
    if (status != RegistryStatus::kDone) throw RuntimeError(static_cast<int>(status) % 200);
  });
}

constexpr int kDenied = static_cast<int>(RegistryStatus::kAccessDenied);

class ReadOnlyMimeRegistry : public MimeRegistry {
 protected:
  void SetUp() override {
    Configure("[Default Applications]\ntext/csv=other.desktop\n");
    Install("other.desktop", "other");
    // The test's folder is open to every user, the files as each test has it.
    Allow("", 0755);
    Allow("config", 0777);
  }
  void Allow(std::string_view name, mode_t mode) const {
    ASSERT_EQ(::chmod((home / name).c_str(), mode), 0);
  }
  static RegistryStatus QueryOnly() { return Open(".csv").status; }
  static RegistryStatus All() { return Open(".csv", RegistryAccess::kAll).status; }
  static RegistryStatus Write() { return SetClass("csvFile"); }
  void ExpectDenied() const {
    const std::string before = Configuration();
    EXPECT_EQ(StatusAsOrdinaryUser(QueryOnly), 0);
    EXPECT_EQ(StatusAsOrdinaryUser(All), kDenied);
    EXPECT_EQ(StatusAsOrdinaryUser([] { return Make(".csv").status; }), kDenied);
    EXPECT_EQ(StatusAsOrdinaryUser(Write), kDenied);
    EXPECT_EQ(Configuration(), before);
    EXPECT_EQ(std::distance(fs::directory_iterator(home / "config"), {}), 1);
  }
};

TEST_F(ReadOnlyMimeRegistry, IsNotReadOnlyWhereFileAndFolderMayBeWritten) {
  Allow("config/mimeapps.list", 0666);
  EXPECT_EQ(StatusAsOrdinaryUser(All), 0);
  EXPECT_EQ(StatusAsOrdinaryUser(Write), 0);
  EXPECT_EQ(Configuration(), kDefault);
}

TEST_F(ReadOnlyMimeRegistry, CanBeQueriedWhenTheFileMayNotBeWritten) {
  Allow("config/mimeapps.list", 0444);
  ExpectDenied();
}

TEST_F(ReadOnlyMimeRegistry, CanBeQueriedWhenItsFolderMayNotBeWritten) {
  Allow("config/mimeapps.list", 0666);
  Allow("config", 0755);
  ExpectDenied();
}

TEST_F(ReadOnlyMimeRegistry, CanBeQueriedWhenTheDesktopsOwnFileMayNotBeWritten) {
  fs::rename(home / "config/mimeapps.list", home / "config/kde-mimeapps.list");
  Allow("config/kde-mimeapps.list", 0444);
  desktop.Set("KDE");
  EXPECT_EQ(StatusAsOrdinaryUser(QueryOnly), 0);
  EXPECT_EQ(StatusAsOrdinaryUser(All), kDenied);
  EXPECT_EQ(StatusAsOrdinaryUser(Write), kDenied);
  EXPECT_FALSE(fs::exists(home / "config/mimeapps.list"));
}

TEST_F(ReadOnlyMimeRegistry, IsNotWrittenWhereTheFileCannotBeRead) {
  Allow("config/mimeapps.list", 0222);
  EXPECT_EQ(StatusAsOrdinaryUser([] { return Make(".csv").status; }), kDenied);
  EXPECT_EQ(Configuration(), "[Default Applications]\ntext/csv=other.desktop\n");
}

}  // namespace

}  // namespace tarvo::test
