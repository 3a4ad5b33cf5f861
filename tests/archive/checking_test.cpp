#include <filesystem>

#include "archive_maker.h"
#include "base/runtime_error.h"

namespace tarvo::test {
namespace {

using ::testing::HasSubstr;

std::string Sentence(const std::string& member, const std::string& predicate) {
  return "The member \"" + member + "\" " + predicate + ".";
}

TEST_F(Packages, ADriverWithStoredAndDeflatedMembersIsValid) {
  EXPECT_EQ(FaultOf(ArchiveOf(SmallDriver())), "");
}

TEST_F(Packages, TheDescriptionIsFoundInAnyLetterCaseButOnlyInTheRoot) {
  EXPECT_EQ(FaultOf(ArchiveOf({{.name = "DRIVER.INF", .content = "x"}})), "");
  EXPECT_EQ(FaultOf(ArchiveOf({{.name = "./Driver.Inf", .content = "x"}})), "");
  const std::string missing = "The package has no \"driver.inf\" in its root.";
  EXPECT_EQ(FaultOf(ArchiveOf({{.name = "Meter/driver.inf", .content = "x"}})), missing);
  EXPECT_EQ(FaultOf(ArchiveOf({{.name = "driver.inf/", .content = ""}})), missing);
  EXPECT_EQ(FaultOf(ArchiveOf({{.name = "tool.exe", .content = "x"}})), missing);
  EXPECT_EQ(FaultOf(ArchiveOf({})), missing);
}

TEST_F(Packages, ThatWereOnlyCheckedCannotBeUnpacked) {
  folder.WriteFile("package.drv", ArchiveOf(SmallDriver()));
  Package package(SystemPlatform(), folder / "package.drv");
  EXPECT_FALSE(package.CheckOnly());
  EXPECT_THROW(package.Unpack(folder / "target"), RuntimeError);
  EXPECT_FALSE(package.Check());
  package.Unpack(folder / "target");
  EXPECT_EQ(TreeOf(folder / "target").size(), SmallDriver().size());
}

TEST_F(Packages, AreJudgedAlikeWhetherTheyAreToBeUnpackedOrNot) {
  auto members = SmallDriver();
  members[1].crc = 1;
  for (const std::string& bytes : {ArchiveOf(members), ArchiveOf({}), std::string("no archive")}) {
    folder.WriteFile("package.drv", bytes);
    Package package(SystemPlatform(), folder / "package.drv");
    const auto fault = package.CheckOnly();
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->sentence, FaultOf(bytes));
  }
}

TEST_F(Packages, HandHeldComponentsNeedNoDescription) {
  EXPECT_EQ(FaultOf(ArchiveOf({}), PackageKind::kHandHeld), "");
  EXPECT_EQ(FaultOf(ArchiveOf({{.name = "a.prc", .content = "x"}}), PackageKind::kHandHeld), "");
}

TEST_F(Packages, WhatIsNoArchiveIsInvalid) {
  EXPECT_EQ(FaultOf(""), "The package is empty.");
  const std::string noEnd = "The package has no end record: it is cut off or no zip archive.";
  EXPECT_EQ(FaultOf("x"), noEnd);
  EXPECT_EQ(FaultOf(std::string(200000, 'P')), noEnd);
  const auto missing = Package(SystemPlatform(), folder / "nothing.drv").Check();
  ASSERT_TRUE(missing);
  EXPECT_THAT(missing->sentence, HasSubstr("cannot be read: File not found"));
  folder.MakeFolder("folder.drv");
  EXPECT_TRUE(Package(SystemPlatform(), folder / "folder.drv").Check());
}

TEST_F(Packages, ADamagedMemberBesideAnIntactDescriptionIsInvalid) {
  EXPECT_EQ(FaultWith({.name = "a", .content = "abc", .crc = 1}),
            Sentence("a", "has a wrong checksum"));
}

TEST_F(Packages, AFaultNamesItsMember) {
  folder.WriteFile("package.drv", ArchiveOf({{.name = "driver.inf", .content = "x", .crc = 1}}));
  const auto fault = Package(SystemPlatform(), folder / "package.drv").Check();
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->member, "driver.inf");
}

TEST_F(Packages, SizesThatLieAreFound) {
  EXPECT_EQ(FaultWith({.name = "a", .content = "abcd", .isDeflated = true, .size = 3}),
            Sentence("a", "is longer than it says"));
  EXPECT_EQ(FaultWith({.name = "a", .content = "abcd", .isDeflated = true, .size = 5}),
            Sentence("a", "is shorter than it says"));
  EXPECT_EQ(FaultWith({.name = "a", .content = "abcd", .size = 5}),
            Sentence("a", "is stored, but its two sizes differ"));
  EXPECT_EQ(FaultWith({.name = "a", .content = "abcd", .localSize = 3}),
            Sentence("a", "has another size in its header than in the directory"));
  EXPECT_EQ(FaultWith({.name = "a", .content = "abcd", .isDeflated = true, .packedSize = 3}),
            Sentence("a", "is damaged and ends too early"));
  EXPECT_EQ(FaultWith({.name = "a", .content = "abcd", .size = 9000, .packedSize = 9000}),
            Sentence("a", "reaches into the package's directory"));
}

TEST_F(Packages, AMemberThatInflatesBeyondWhatItClaimsIsStopped) {
  const std::string bomb(50 * 1000 * 1000, '\0');
  EXPECT_EQ(FaultWith({.name = "a", .content = bomb, .isDeflated = true, .size = 10}),
            Sentence("a", "is longer than it says"));
}

TEST_F(Packages, BytesBehindTheDeflatedOnesAreFound) {
  const std::string packed = Deflated("abcd") + "more";
  EXPECT_EQ(FaultWith({.name = "a", .content = packed, .method = 8, .crc = 0xED82CD11, .size = 4}),
            Sentence("a", "has a wrong packed size"));
}

TEST_F(Packages, HeadersThatContradictTheDirectoryAreFound) {
  const auto behind = static_cast<std::uint32_t>(ArchiveOf(SmallDriver()).find("PK\1\2")) + 1;
  EXPECT_EQ(FaultWith({.name = "a", .content = "abcd", .localName = "b"}),
            Sentence("a", "has another name in its header than in the directory"));
  EXPECT_EQ(FaultWith({.name = "a", .content = "abcd", .localMethod = 8}),
            Sentence("a", "has another method in its header than in the directory"));
  EXPECT_EQ(FaultWith({.name = "a", .content = "abcd", .localCrc = 8}),
            Sentence("a", "has another checksum in its header than in the directory"));
  EXPECT_EQ(FaultWith({.name = "a", .content = "abcd", .headerOffset = behind}),
            Sentence("a", "has no header where the directory says"));
  EXPECT_EQ(FaultWith({.name = "a", .content = "abcd", .headerOffset = 4000000}),
            Sentence("a", "lies outside the package"));
}

TEST_F(Packages, OverlappingMembersAreFound) {
  // The second member's header and bytes lie within the first one's content.
  const std::string inner = ArchiveOf({{.name = "b", .content = "abc"}}).substr(0, 34);
  std::vector<MadeMember> members = SmallDriver();
  const std::string before = ArchiveOf(members);
  const std::size_t start = before.find("PK\1\2");
  members.push_back({.name = "a", .content = inner});
  members.push_back({.name = "b", .content = "abc"});
  members.back().headerOffset = static_cast<std::uint32_t>(start + 31);
  EXPECT_EQ(FaultOf(ArchiveOf(members)), Sentence("b", "overlaps another member"));
}

TEST_F(Packages, DescriptorsOfEveryFormAreVerified) {
  for (const bool isSigned : {false, true}) {
    for (const bool isLarge : {false, true}) {
      for (const bool isDeflated : {false, true}) {
        MadeMember member{.name = "a", .content = "abcdabcd", .isDeflated = isDeflated};
        member.descriptor = DescriptorOf(member, isSigned, isLarge);
        EXPECT_EQ(FaultWith(member), "") << isSigned << isLarge << isDeflated;
        member.descriptor.back() = 1;
        EXPECT_EQ(FaultWith(member),
                  Sentence("a", "has a descriptor that does not agree with the directory"));
      }
    }
  }
}

TEST_F(Packages, EncryptedMembersAndUnknownMethodsAreRefused) {
  EXPECT_EQ(FaultWith({.name = "a", .content = "x", .flags = 1}), Sentence("a", "is encrypted"));
  EXPECT_EQ(FaultWith({.name = "a", .content = "x", .flags = 64}), Sentence("a", "is encrypted"));
  EXPECT_EQ(FaultWith({.name = "a", .content = "x", .method = 12}),
            Sentence("a", "is packed with the method 12, which is unknown here"));
}

TEST_F(Packages, MembersThatNeedANewerProgramAreRefused) {
  EXPECT_EQ(FaultWith({.name = "a", .content = "x", .version = 46}), "");
  EXPECT_EQ(FaultWith({.name = "a", .content = "x", .version = 47}),
            Sentence("a", "needs a newer program to unpack it"));
  EXPECT_EQ(FaultWith({.name = "a", .content = "x", .version = 255}),
            Sentence("a", "needs a newer program to unpack it"));
}

TEST_F(Packages, ExtraFieldsMustEndWhereTheySay) {
  const std::string whole = ExtraField(0x5455, "time") + ExtraField(0x7875, "");
  const std::string cut = ExtraField(0x5455, "time").substr(0, 7);
  const std::string lying = whole + std::string("\x01\x00\xFF\xFF", 4);
  const std::string damaged = Sentence("a", "has a damaged extra field");
  for (const std::string& extra : {whole, whole + std::string(3, '\0')}) {
    EXPECT_EQ(FaultWith({.name = "a", .content = "x", .extra = extra, .localExtra = extra}), "");
  }
  for (const std::string& extra : {cut, lying}) {
    EXPECT_EQ(FaultWith({.name = "a", .content = "x", .extra = extra}), damaged);
    EXPECT_EQ(FaultWith({.name = "a", .content = "x", .localExtra = extra}), damaged);
  }
}

TEST_F(Packages, LinksAndSpecialFilesAreRefused) {
  const auto withMode = [&](std::uint32_t mode) {
    return FaultWith({.name = "a", .content = "x", .attributes = mode << 16, .host = 3});
  };
  EXPECT_EQ(withMode(0120777), Sentence("a", "is a link"));
  EXPECT_EQ(withMode(0010644), Sentence("a", "is a special file"));
  EXPECT_EQ(withMode(0020644), Sentence("a", "is a special file"));
  EXPECT_EQ(withMode(0060644), Sentence("a", "is a special file"));
  EXPECT_EQ(withMode(0140644), Sentence("a", "is a special file"));
  EXPECT_EQ(withMode(0040755), Sentence("a", "is a folder under the name of a file"));
  EXPECT_EQ(withMode(0104755), "") << "the set-user-id bit is dropped when unpacking";
  EXPECT_EQ(FaultWith({.name = "a", .content = "x", .attributes = 0x400}),
            Sentence("a", "is a link"));
}

TEST_F(Packages, AFolderHasNoContent) {
  EXPECT_EQ(FaultWith({.name = "Data/", .content = ""}), "");
  EXPECT_EQ(FaultWith({.name = "Data/", .content = "", .isDeflated = true}), "");
  EXPECT_EQ(FaultWith({.name = "Data/", .content = "x"}),
            Sentence("Data/", "is a folder, but has content"));
}

TEST_F(Packages, MoreThanFourGibibytesAreRefusedBeforeAnythingIsInflated) {
  std::vector<MadeMember> members = SmallDriver();
  for (const char* name : {"a", "b"}) {
    members.push_back({.name = name, .content = "x", .isDeflated = true, .size = 0x80000000});
  }
  EXPECT_EQ(FaultOf(ArchiveOf(members)), "The package would unpack to more than 4 GiB.");
}

TEST_F(Packages, TheNumberOfEntriesMustBeTrue) {
  EXPECT_EQ(FaultOf(ArchiveOf(SmallDriver(), "", 1)),
            "The package's directory is damaged or cut off.");
  EXPECT_EQ(FaultOf(ArchiveOf(SmallDriver(), "", -1)),
            "The package's directory is larger than its entries.");
}

TEST_F(Packages, ACommentMayHoldWhatLooksLikeAnEndRecord) {
  const std::string end = ArchiveOf({});
  EXPECT_EQ(FaultOf(ArchiveOf(SmallDriver(), "before " + end + " behind")), "");
  EXPECT_EQ(FaultOf(ArchiveOf(SmallDriver(), std::string(65535, 'c'))), "");
  EXPECT_EQ(FaultOf(ArchiveOf(SmallDriver(), "before " + end)),
            "The package has more than one end record.")
      << "programs would disagree about which archive this is";
}

TEST_F(Packages, OtherDataMayPrecedeTheArchiveButNotFollowIt) {
  EXPECT_EQ(FaultOf("#!/bin/sh\n" + ArchiveOf(SmallDriver())), "");
  EXPECT_NE(FaultOf(ArchiveOf(SmallDriver()) + "\n"), "");
  EXPECT_EQ(FaultOf(ArchiveOf(SmallDriver(), "comment") + std::string(9000, '\0')), "")
      << "the last block may be filled with zeros";
}

TEST_F(Packages, UnpackingNeedsASuccessfulCheck) {
  folder.WriteFile("package.drv", "no archive");
  Package package(SystemPlatform(), folder / "package.drv");
  const auto unpack = [&] { package.Unpack(folder / "target"); };
  EXPECT_THROW(unpack(), RuntimeError);
  package.Check();
  EXPECT_THROW(unpack(), RuntimeError);
  EXPECT_FALSE(std::filesystem::exists(folder / "target"));
}

}  // namespace
}  // namespace tarvo::test
