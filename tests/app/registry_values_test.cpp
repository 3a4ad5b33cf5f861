#include "app/start/registry_values.h"

#include "support/program_run.h"

namespace tarvo::test {
namespace {

class RegistryValues : public ProgramRun {
 protected:
  static constexpr const char* kPath = "class\\shell";

  // What reading gives, after "read: " when it succeeds.
  std::string Read(const std::string& path = kPath, std::string result = "before") {
    const bool done = ReadRegistryValue(platform, RegistryRoot::kClasses, path, {}, result);
    EXPECT_EQ(platform.registry.openKeys, 0);
    return done ? "read: " + result : result;
  }
  std::string ReadOf(RegistryType type, const std::string& data) {
    platform.registry.Set(kPath, {}, {type, data});
    return Read();
  }
  static std::string Bytes(std::initializer_list<unsigned char> bytes) {
    return {bytes.begin(), bytes.end()};
  }
};

TEST_F(RegistryValues, AreStringsWithoutTheOneNulAtTheirEnd) {
  EXPECT_EQ(ReadOf(RegistryType::kString, "text"), "read: text");
  EXPECT_EQ(ReadOf(RegistryType::kString, std::string("text\0", 5)), "read: text");
  EXPECT_EQ(ReadOf(RegistryType::kString, std::string("text\0\0", 6)),
            "read: " + std::string("text\0", 5));
  EXPECT_EQ(ReadOf(RegistryType::kString, ""), "read: ");
}

// No byte is padded to two digits, so that a lower byte below 16 spoils the number. It is kept
// because the program reads only strings.
TEST_F(RegistryValues, AreNumbersByTheUnpaddedDigitsOfTheirBytes) {
  EXPECT_EQ(ReadOf(RegistryType::kNumber, Bytes({5, 0, 0, 0})), "read: 5");
  EXPECT_EQ(ReadOf(RegistryType::kNumber, Bytes({0, 0, 0, 0})), "read: 0");
  EXPECT_EQ(ReadOf(RegistryType::kNumber, Bytes({0xFF, 0xFF, 0, 0})), "read: 65535");
  EXPECT_EQ(ReadOf(RegistryType::kNumber, Bytes({0x34, 0x12, 0, 0})), "read: 4660");
  EXPECT_EQ(ReadOf(RegistryType::kNumber, Bytes({0x0A, 0x01, 0, 0})), "read: 26") << "not 266";
  EXPECT_EQ(ReadOf(RegistryType::kNumber, Bytes({0, 0x01, 0, 0})), "read: 16") << "not 256";
  EXPECT_EQ(ReadOf(RegistryType::kNumber, Bytes({0xFF, 0xFF, 0xFF, 0xFF})), "read: 4294967295");
}

TEST_F(RegistryValues, OfAnotherTypeLeaveTheResultAsItWas) {
  EXPECT_EQ(ReadOf(RegistryType::kBinary, "bytes"), "read: before");
}

TEST_F(RegistryValues, ThatAreMissingGiveNothing) {
  EXPECT_EQ(Read("no such key"), "");
  platform.registry.Set(kPath, "other", {RegistryType::kString, "x"});
  EXPECT_EQ(Read(), "");
}

TEST_F(RegistryValues, LongerThanTheBufferAreNotRead) {
  EXPECT_EQ(ReadOf(RegistryType::kString, std::string(1024, 'x')),
            "read: " + std::string(1024, 'x'));
  EXPECT_EQ(ReadOf(RegistryType::kString, std::string(1025, 'x')), "");
}

TEST_F(RegistryValues, AreReadFromAKeyThatOpensForQueriesOnly) {
  platform.registry.SetString(kPath, "text");
  platform.registry.isReadOnly = true;
  EXPECT_EQ(Read(), "read: text");
  platform.registry.isUnreadable = true;
  EXPECT_EQ(Read(), "");
}

TEST_F(RegistryValues, AreWrittenWithANulAtTheirEndInAKeyMadeWhenMissing) {
  std::string value = "text";
  EXPECT_TRUE(WriteRegistryString(platform, RegistryRoot::kClasses, "new", {}, value));
  EXPECT_EQ(value, "text");
  EXPECT_EQ(platform.registry.String("new"), std::string("text\0", 5));
  EXPECT_EQ(Read("new"), "read: text");
}

TEST_F(RegistryValues, ThatCannotBeWrittenComeBackEmpty) {
  platform.registry.SetString(kPath, "old");
  platform.registry.isReadOnly = true;
  for (const char* path : {kPath, "new"}) {
    std::string value = "text";
    EXPECT_FALSE(WriteRegistryString(platform, RegistryRoot::kClasses, path, {}, value));
    EXPECT_EQ(value, "");
    EXPECT_EQ(platform.registry.openKeys, 0);
  }
  EXPECT_EQ(platform.registry.String(kPath), "old");
  EXPECT_FALSE(platform.registry.Has("new"));
}

// Only a key that is not there is made: one that refuses to open is left alone.
TEST_F(RegistryValues, AreNotWrittenIntoAKeyThatRefusesToOpen) {
  platform.registry.SetString(kPath, "old");
  platform.registry.isUnreadable = true;
  std::string value = "text";
  EXPECT_FALSE(WriteRegistryString(platform, RegistryRoot::kClasses, kPath, {}, value));
  EXPECT_EQ(platform.registry.String(kPath), "old");
}

}  // namespace
}  // namespace tarvo::test
