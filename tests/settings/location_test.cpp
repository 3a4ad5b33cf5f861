#include <filesystem>
#include <string>
#include <vector>

#include "base/paths.h"
#include "store_fixture.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> NamesIn(const std::string& path) {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(path)) {
    names.push_back(entry.path().filename().string());
  }
  return names;
}

class Location : public testing::Test {
 protected:
  TemporaryFolder folder;
  WatchedPlatform platform;
  RegistryReplacement store{platform};
};

TEST_F(Location, TheFileLiesInTheCompanysFolderOfTheCommonDocuments) {
  platform.specialFolders = {{46, folder.MakeFolder("common")}, {5, folder.MakeFolder("own")}};
  store.OpenLocalRegistry("Some Company");
  EXPECT_EQ(store.RegistryDataFile(), folder / "common/Some Company/localregistry.dat");
  EXPECT_EQ(folder.ReadFile("common/Some Company/localregistry.dat"), EmptyRecordBytes());
  EXPECT_TRUE(fs::is_empty(folder / "own"));
}

TEST_F(Location, AFolderThatEndsInASeparatorGetsNoSecondOne) {
  platform.specialFolders = {{46, folder.MakeFolder("common") + kSeparator}};
  store.OpenLocalRegistry("Company");
  EXPECT_EQ(store.RegistryDataFile(), folder / "common/Company/localregistry.dat");
}

TEST_F(Location, WithoutCommonDocumentsTheUsersOwnServe) {
  platform.specialFolders = {{5, folder.MakeFolder("own")}};
  store.OpenLocalRegistry("Company");
  EXPECT_EQ(store.RegistryDataFile(), folder / "own/Company/localregistry.dat");
}

TEST_F(Location, CommonDocumentsThatAreNothingOrTheSeparatorAloneDoNotServe) {
  for (const std::string& nothing : {std::string(), std::string(1, kSeparator)}) {
    platform.specialFolders = {{46, nothing}, {5, folder.MakeFolder("own")}};
    store.OpenLocalRegistry("Company");
    EXPECT_EQ(store.RegistryDataFile(), folder / "own/Company/localregistry.dat");
  }
}

TEST_F(Location, WithoutAnyDocumentsTheBaseIsTheSeparatorAlone) {
  std::string made;
  std::string opened;
  platform.beforeMakingFolder = [&](std::string_view path) {
    made = path;
    throw RuntimeError(kPermissionDenied);
  };
  platform.beforeOpening = [&](std::string_view path) {
    opened = path;
    throw RuntimeError(kPathNotFound);
  };
  store.OpenLocalRegistry("No Such Company");
  EXPECT_EQ(made, WithSeparator("") + "No Such Company");
  EXPECT_EQ(opened, JoinPath(made, "localregistry.dat"));
  EXPECT_EQ(store.RegistryDataFile(), "");
}

TEST_F(Location, AFolderThatCannotBeMadeIsNoErrorAndLeavesNoFile) {
  folder.WriteFile("common/Company", "a plain file in the way");
  platform.specialFolders = {{46, folder / "common"}};
  EXPECT_EQ(ErrorOf([&] { store.OpenLocalRegistry("Company"); }), 0);
  EXPECT_EQ(store.RegistryDataFile(), "");
  EXPECT_EQ(store.GetSetting("K", "default"), "default");
}

TEST_F(Location, AFolderThatExistsIsUsedWithWhatItHolds) {
  folder.WriteFile("common/Company/localregistry.dat", EmptyRecordBytes() + RecordBytes("K", "v"));
  platform.specialFolders = {{46, folder / "common"}};
  store.OpenLocalRegistry("Company");
  EXPECT_EQ(store.GetSetting("K", "default"), "v");
}

TEST_F(Location, NamesInAnotherLetterCaseAreUsedAndNothingIsMadeBesideThem) {
  folder.WriteFile("common/COMPANY/LocalRegistry.DAT", EmptyRecordBytes() + RecordBytes("K", "v"));
  platform.specialFolders = {{46, folder / "common"}};
  store.OpenLocalRegistry("Company");
  EXPECT_EQ(store.GetSetting("K", "default"), "v");
  EXPECT_EQ(NamesIn(folder / "common"), std::vector<std::string>{"COMPANY"});
  EXPECT_EQ(NamesIn(folder / "common/COMPANY"), std::vector<std::string>{"LocalRegistry.DAT"});
}

TEST_F(Location, OpeningWithoutACompanyRaisesError5) {
  platform.specialFolders = {{46, folder.MakeFolder("common")}};
  EXPECT_EQ(ErrorOf([&] { store.OpenLocalRegistry(); }), 5);
  EXPECT_EQ(store.RegistryDataFile(), "");
  EXPECT_TRUE(fs::is_empty(folder / "common"));
}

TEST_F(Location, ANameGivenAtOpeningBecomesTheCompanysAndNoneKeepsIt) {
  platform.specialFolders = {{46, folder.MakeFolder("common")}};
  store.SetCompanyName("First");
  EXPECT_EQ(store.CompanyName(), "First");
  store.OpenLocalRegistry();
  EXPECT_EQ(store.CompanyName(), "First");
  EXPECT_EQ(store.RegistryDataFile(), folder / "common/First/localregistry.dat");
  store.OpenLocalRegistry("Second");
  EXPECT_EQ(store.CompanyName(), "Second");
  EXPECT_EQ(store.RegistryDataFile(), folder / "common/Second/localregistry.dat");
}

TEST_F(Location, APathThatCannotBeOpenedBecomesNone) {
  store.SetRegistryDataFile(folder / "here.dat");
  EXPECT_EQ(store.RegistryDataFile(), folder / "here.dat");
  store.SetRegistryDataFile(folder / "no/such/folder.dat");
  EXPECT_EQ(store.RegistryDataFile(), "");
}

TEST_F(Location, SettingThePathClearsAStaleLockAndClosesTheFile) {
  folder.WriteFile("file.dat", RecordBytes("1234567", "44000.5"));
  store.SetRegistryDataFile(folder / "file.dat");
  EXPECT_EQ(folder.ReadFile("file.dat"), EmptyRecordBytes());
  EXPECT_EQ(platform.openFiles, 0);
}

}  // namespace
}  // namespace tarvo::test
