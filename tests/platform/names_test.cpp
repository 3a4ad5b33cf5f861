#include <filesystem>

#include "base/text.h"
#include "platform/names_fixture.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

TEST_F(ResolveNameTest, FindsANameInAnyLetterCase) {
  folder.WriteFile("driver.inf");
  folder.MakeFolder("DRIVERS");
  folder.WriteFile("MÈTRE.txt");
  EXPECT_EQ(ResolveName(platform, folder / "Driver.INF"), folder / "driver.inf");
  EXPECT_EQ(ResolveName(platform, folder / "drivers"), folder / "DRIVERS");
  EXPECT_EQ(ResolveName(platform, folder / "mètre.TXT"), folder / "MÈTRE.txt");
}

TEST_F(ResolveNameTest, PrefersTheExactName) {
  for (const char* name : {"driver.ico", "Driver.Ico", "DRIVER.ICO", "driver.ICO"}) {
    folder.WriteFile(name);
  }
  for (const char* name : {"driver.ico", "Driver.Ico", "DRIVER.ICO", "driver.ICO"}) {
    EXPECT_EQ(ResolveName(platform, folder / name), folder / name);
  }
  EXPECT_EQ(platform.listings, 0) << "an exact name needs no listing";
  EXPECT_TRUE(
      EqualIgnoringCase(ResolveName(platform, folder / "dRIVER.ico"), folder / "driver.ico"));
}

TEST_F(ResolveNameTest, GivesAMissingNameBackAsItIs) {
  folder.WriteFile("other");
  EXPECT_EQ(ResolveName(platform, folder / "Driver.inf"), folder / "Driver.inf");
  EXPECT_EQ(ResolveName(platform, folder / "no/such/Name"), folder / "no/such/Name");
  EXPECT_EQ(ResolveName(platform, ""), "");
  EXPECT_EQ(ResolveName(platform, folder / ""), folder / "");
}

TEST_F(ResolveNameTest, FindsTheFoldersOnTheWayInAnyLetterCaseToo) {
  folder.WriteFile("Meter/driver.inf");
  EXPECT_EQ(ResolveName(platform, folder / "METER/Driver.INF"), folder / "Meter/driver.inf");
  EXPECT_EQ(ResolveName(platform, folder / "METER/missing"), folder / "Meter/missing");
  EXPECT_EQ(ResolveName(platform, folder / "METER/"), folder / "Meter/");
}

TEST_F(ResolveNameTest, FindsRelativeNamesInTheCurrentFolder) {
  folder.WriteFile("driver.inf");
  folder.WriteFile("Data/File");
  platform.ChangeCurrentFolder(folder.Path());
  EXPECT_EQ(ResolveName(platform, "DRIVER.INF"), "driver.inf");
  EXPECT_EQ(ResolveName(platform, "Data/FILE"), "Data/File");
  EXPECT_EQ(ResolveName(platform, ".."), "..");
}

TEST_F(ResolveNameTest, FindsNothingInAFolderThatCannotBeListed) {
  folder.WriteFile("driver.inf");
  platform.listingFails = true;
  EXPECT_EQ(ResolveName(platform, folder / "Driver.INF"), folder / "Driver.INF");
  EXPECT_EQ(ResolveName(platform, folder / "driver.inf"), folder / "driver.inf");
}

TEST_F(NamesTest, NothingIsMadeBesideACaseVariant) {
  folder.WriteFile("Store.dat", "old");
  const auto file =
      platform.OpenFile(ResolveName(platform, folder / "STORE.DAT"), OpenFor::kReadingAndWriting);
  file->WriteAt(0, "new");
  EXPECT_THAT(Listed("*.*", kDirectory | kHidden), ElementsAre("Store.dat"));
  EXPECT_EQ(folder.ReadFile("Store.dat"), "new");
}

TEST_F(ListFolderTest, GivesPlainFilesThatMatchInAnyLetterCase) {
  for (const char* name : {"a.csv", "B.CSV", "c.txt", "csv", "d.csv.bak"}) folder.WriteFile(name);
  EXPECT_THAT(Listed("*.csv", kNormal), UnorderedElementsAre("a.csv", "B.CSV"));
  EXPECT_THAT(Listed("*.*", kNormal),
              UnorderedElementsAre("a.csv", "B.CSV", "c.txt", "csv", "d.csv.bak"));
  EXPECT_THAT(Listed("*.asc", kNormal), IsEmpty());
}

TEST_F(ListFolderTest, KeepsTheSystemsOrder) {
  for (const char* name : {"b", "A", "z", "c"}) folder.WriteFile(name);
  std::vector<std::string> order;
  for (const FolderEntry& entry : platform.Entries(folder.Path())) order.push_back(entry.name);
  EXPECT_EQ(Listed("*.*", kNormal), order);
}

TEST_F(ListFolderTest, FailsWhereTheFolderCannotBeListed) {
  platform.listingFails = true;
  EXPECT_THROW(Listed("*", kNormal), RuntimeError);
}

TEST_F(ReadWholeFileTest, GivesEveryByteOfAFileInAnyLetterCase) {
  std::string content;
  for (int i = 0; i < 100000; ++i) content += static_cast<char>(i);
  folder.WriteFile("Tarvo.Dic", content);
  EXPECT_EQ(ReadWholeFile(platform, folder / "TARVO.DIC"), content);
  folder.WriteFile("empty");
  EXPECT_EQ(ReadWholeFile(platform, folder / "empty"), "");
}

TEST_F(ReadWholeFileTest, SaysWhatIsMissing) {
  const auto errorOf = [&](const std::string& path) {
    try {
      ReadWholeFile(platform, path);
    } catch (const RuntimeError& error) {
      return error.Number();
    }
    return 0;
  };
  EXPECT_EQ(errorOf(folder / "missing"), 53);
  EXPECT_EQ(errorOf(folder / "missing/x"), 76);
  EXPECT_EQ(errorOf(folder.Path()), 75);
}

}  // namespace
}  // namespace tarvo::test
