#include "archive_maker.h"

namespace tarvo::test {
namespace {

using ::testing::HasSubstr;

// What the check says of a driver with one more member of this name.
class MemberNames : public Packages {
 protected:
  std::string Named(const std::string& name) { return FaultWith({.name = name, .content = ""}); }
};

TEST_F(MemberNames, OrdinaryOnesAreValid) {
  for (const char* name : {"a", "Data/a.txt", "Data/", "./a", "a/./b", "a b", "...", ".hidden",
                           "a..b", "12:30", "\xC3\xA4", "Data\\a.txt"}) {
    EXPECT_EQ(Named(name), "") << name;
  }
}

TEST_F(MemberNames, ThatLeadOutOfTheFolderAreRefused) {
  for (const char* name : {"..", "../a", "a/../b", "a/..", "..\\a", "a\\..\\..\\b", "../"}) {
    EXPECT_THAT(Named(name), HasSubstr("has \"..\" in its path")) << name;
  }
  for (const char* name : {"/", "/a", "\\a", "//server/share", "\\\\server\\share"}) {
    EXPECT_THAT(Named(name), HasSubstr("has an absolute path")) << name;
  }
  for (const char* name : {"C:", "C:a", "c:/a", "C:\\a", "a/d:b"}) {
    EXPECT_THAT(Named(name), HasSubstr("has a drive letter in its path")) << name;
  }
}

TEST_F(MemberNames, ThatNameNothingAreRefused) {
  EXPECT_EQ(Named(""), "The member \"\" has an empty name.");
  EXPECT_THAT(Named("."), HasSubstr("has an empty name"));
  EXPECT_THAT(Named("a/."), HasSubstr("has an empty name"));
  EXPECT_THAT(Named("a//b"), HasSubstr("has an empty folder name"));
  EXPECT_THAT(Named("a//"), HasSubstr("has an empty folder name"));
}

TEST_F(MemberNames, WithNulOrControlCharactersAreRefused) {
  EXPECT_THAT(Named(std::string("a\0b", 3)), HasSubstr("has a NUL in its name"));
  for (const char* name : {"a\nb", "\x1F", "a\x7F", "tab\t"}) {
    EXPECT_THAT(Named(name), HasSubstr("has a control character in its name"));
  }
  EXPECT_THAT(FaultWith({.name = "\xC2\x85", .content = "", .flags = 1 << 11}),
              HasSubstr("has a control character in its name"));
}

TEST_F(MemberNames, OfFilesThatAreNotCompleteAreRefused) {
  for (const char* name :
       {".tarvo-new-1", "Data/.tarvo-new-0", ".TARVO-NEW-12", ".tarvo-new-1/a"}) {
    EXPECT_THAT(Named(name), HasSubstr("has a name that is kept for files that are not complete"))
        << name;
  }
  for (const char* name : {".tarvo-new-", ".tarvo-new-1x", "tarvo-new-1"}) {
    EXPECT_EQ(Named(name), "") << name;
  }
}

TEST_F(MemberNames, OfTooManyBytesAreRefused) {
  EXPECT_EQ(Named(std::string(255, 'x')), "");
  EXPECT_THAT(Named(std::string(256, 'x')), HasSubstr("has a name that is too long"));
  EXPECT_THAT(Named(std::string(65535, 'x')), HasSubstr("has a name that is too long"));
  std::string path = "x";
  while (path.size() < 65535) path += "/x";
  path.resize(65535);
  EXPECT_THAT(Named(path), HasSubstr("has a name that is too long"));
}

TEST_F(MemberNames, ThatWouldOverwriteEachOtherAreRefused) {
  EXPECT_EQ(Named("driver.inf"), "The member \"driver.inf\" is there more than once.");
  EXPECT_EQ(
      Named("Driver.INF"),
      "The member \"Driver.INF\" has the same name as \"driver.inf\" except for letter case.");
  EXPECT_EQ(Named("./driver.inf"), "The member \"driver.inf\" is there more than once.");
  EXPECT_EQ(Named("download.exe"),
            "The member \"download.exe\" has the same name as \"Download.EXE\" except for letter "
            "case.");
  EXPECT_EQ(Named("driver.inf/"), "The member \"driver.inf\" is there more than once.");
  EXPECT_EQ(Named("DRIVER.inf/a"),
            "The member \"DRIVER.inf/a\" lies in \"driver.inf\", which is a file.");
  auto members = SmallDriver();
  members.push_back({.name = "\xC3\x84", .content = "", .flags = 1 << 11});
  members.push_back({.name = "\xC3\xA4", .content = "", .flags = 1 << 11});
  EXPECT_THAT(FaultOf(ArchiveOf(members)), HasSubstr("except for letter case"));
}

TEST_F(MemberNames, OfOneFolderInTwoLetterCasesAreOneFolder) {
  auto members = SmallDriver();
  members.push_back({.name = "Data/a", .content = "1"});
  members.push_back({.name = "data-x/a", .content = "2"});
  members.push_back({.name = "DATA/b", .content = "3"});
  Install(ArchiveOf(members));
  const auto tree = TreeOf(folder / "target");
  EXPECT_EQ(tree.at("Data/a") + tree.at("data-x/a") + tree.at("Data/b"), "123");
}

// The name under which a member of this name is unpacked.
class NameText : public Packages {
 protected:
  std::string UnpackedName(const MadeMember& member) {
    Install(ArchiveOf({{.name = "driver.inf", .content = ""}, member}));
    auto tree = TreeOf(folder / "target");
    tree.erase("driver.inf");
    return tree.size() == 1 ? tree.begin()->first : "";
  }
};

TEST_F(NameText, IsUtf8WhereTheMemberSaysSo) {
  EXPECT_EQ(UnpackedName({.name = "Größe", .content = "", .flags = 1 << 11}), "Größe");
}

TEST_F(NameText, IsInCodePage437Otherwise) {
  EXPECT_EQ(UnpackedName({.name = "Gr\x94\xE1"
                                  "e",
                          .content = ""}),
            "Größe");
}

TEST_F(NameText, OfUnixIsUtf8WhenItCanBe) {
  EXPECT_EQ(UnpackedName({.name = "Größe", .content = "", .host = 3}), "Größe");
}

TEST_F(NameText, OfUnixIsInCodePage437WhenItIsNoUtf8) {
  EXPECT_EQ(UnpackedName({.name = "Gr\x94\xE1"
                                  "e",
                          .content = "",
                          .host = 3}),
            "Größe");
}

std::string UnicodeField(std::string_view name, std::uint32_t crc) {
  std::string field;
  Append(field, 0x7075, 2);
  Append(field, name.size() + 5, 2);
  Append(field, 1, 1);
  Append(field, crc, 4);
  return field.append(name);
}

TEST_F(NameText, OfTheUnicodeFieldCountsWhileItBelongsToTheName) {
  constexpr std::uint32_t kCrcOfA = 0xE8B7BE43;
  EXPECT_EQ(UnpackedName({.name = "a", .content = "", .extra = UnicodeField("ä", kCrcOfA)}), "ä");
}

TEST_F(NameText, OfAStaleUnicodeFieldDoesNotCount) {
  EXPECT_EQ(UnpackedName({.name = "a", .content = "", .extra = UnicodeField("ä", 1)}), "a");
}

TEST_F(NameText, OfTheUnicodeFieldObeysTheRulesToo) {
  constexpr std::uint32_t kCrcOfA = 0xE8B7BE43;
  EXPECT_THAT(FaultWith({.name = "a", .content = "", .extra = UnicodeField("../a", kCrcOfA)}),
              HasSubstr("has \"..\" in its path"));
}

TEST_F(NameText, ThatSaysUtf8AndIsNotIsRefused) {
  EXPECT_THAT(FaultWith({.name = "\xFF", .content = "", .flags = 1 << 11}),
              HasSubstr("has a name that is not UTF-8, as it says"));
}

}  // namespace
}  // namespace tarvo::test
