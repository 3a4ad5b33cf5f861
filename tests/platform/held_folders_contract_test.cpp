#include <filesystem>

#include "contract.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

TEST_P(PlatformContract, EverythingCanBeDoneBelowAHeldFolder) {
  const std::string drivers = folder.MakeFolder("Drivers");
  const auto held = platform.HoldFolder(drivers);
  platform.MakeFolder(JoinPath(drivers, "Meter"));
  const std::string meter = JoinPath(drivers, "Meter");
  platform.MakeFile(JoinPath(meter, "new"), FileUse::kData)->WriteAt(0, "abc");
  platform.RenameFile(JoinPath(meter, "new"), JoinPath(meter, "file"));
  EXPECT_EQ(platform.OpenFile(JoinPath(meter, "file"), OpenFor::kReading)->ReadAt(0, 9), "abc");
  platform.SetAttributes(JoinPath(meter, "file"), kReadOnly);
  EXPECT_EQ(*platform.Attributes(JoinPath(meter, "file")) & kReadOnly, kReadOnly);
  platform.SetAttributes(JoinPath(meter, "file"), kNormal);
  EXPECT_EQ(platform.Entries(meter).size(), 1U);
  EXPECT_EQ(platform.Entries(drivers).size(), 1U);
  platform.RemoveFile(JoinPath(meter, "file"));
  platform.RemoveFolder(meter);
  EXPECT_FALSE(fs::exists(meter));
}

TEST_P(PlatformContract, AMissingFolderOrAFileCannotBeHeld) {
  folder.WriteFile("plain");
  EXPECT_EQ(ErrorOf([&] { platform.HoldFolder(folder / "missing"); }), 76);
  EXPECT_EQ(ErrorOf([&] { platform.HoldFolder(folder / "plain"); }), 76);
  EXPECT_EQ(ErrorOf([&] { platform.HoldFolder(""); }), 76);
}

TEST_P(PlatformContract, AHeldFolderStaysUntilItIsLetGo) {
  const std::string drivers = folder.MakeFolder("Drivers");
  {
    const auto held = platform.HoldFolder(drivers);
    EXPECT_NE(ErrorOf([&] { platform.RemoveFolder(drivers); }), 0);
    EXPECT_TRUE(fs::exists(drivers));
  }
  platform.RemoveFolder(drivers);
  EXPECT_FALSE(fs::exists(drivers));
}

TEST_P(PlatformContract, WhatIsMissingBelowAHeldFolderIsMissingAsElsewhere) {
  const std::string drivers = folder.MakeFolder("Drivers");
  const auto held = platform.HoldFolder(drivers);
  EXPECT_EQ(ErrorOf([&] { platform.OpenFile(JoinPath(drivers, "a"), OpenFor::kReading); }), 53);
  EXPECT_EQ(ErrorOf([&] { platform.RemoveFile(JoinPath(drivers, "a")); }), 53);
  const std::string below = JoinPath(JoinPath(drivers, "a"), "b");
  EXPECT_EQ(ErrorOf([&] { platform.MakeFile(below, FileUse::kData); }), 76);
  EXPECT_EQ(ErrorOf([&] { platform.MakeFolder(below); }), 76);
  EXPECT_EQ(ErrorOf([&] { platform.Entries(below); }), 76);
  EXPECT_FALSE(platform.Attributes(below));
  EXPECT_FALSE(platform.IsLink(below));
}

TEST_P(PlatformContract, AFileWithTwoNamesIsTheSameUnderBoth) {
  folder.WriteFile("one", "x");
  EXPECT_FALSE(platform.HasOtherNames("one"));
  fs::create_hard_link(folder / "one", folder / "two");
  EXPECT_TRUE(platform.HasOtherNames("one"));
  EXPECT_TRUE(platform.HasOtherNames("two"));
  EXPECT_FALSE(platform.HasOtherNames("missing"));
  folder.MakeFolder("Data/below");
  EXPECT_FALSE(platform.HasOtherNames("Data"));
}

TEST_P(PlatformContract, TheAttributesOfAFileWithOtherNamesStayAsTheyAre) {
  folder.WriteFile("one", "x");
  fs::create_hard_link(folder / "one", folder / "two");
  platform.SetAttributes("two", kReadOnly);
  EXPECT_EQ(*platform.Attributes("one") & kReadOnly, 0U);
  fs::remove(folder / "one");
  platform.SetAttributes("two", kReadOnly);
  EXPECT_EQ(*platform.Attributes("two") & kReadOnly, kReadOnly);
  platform.SetAttributes("two", kNormal);
}

}  // namespace
}  // namespace tarvo::test
