#include <filesystem>
#include <sstream>

#include "archive_maker.h"

namespace tarvo::test {
namespace {

constexpr long kMostMemory = 64 * 1024;  // KiB, the process with all its libraries

class LittleMemory : public Packages {
 protected:
  // What the probe says of the package; fails when it took too much memory.
  std::string Verdict() {
    const std::string command = std::string(MEMORY_PROBE) + " '" + folder / "package.drv" + "' '" +
                                folder / "target" + "' >'" + folder / "result" + "'";
    EXPECT_EQ(std::system(command.c_str()), 0);
    std::istringstream result(folder.ReadFile("result"));
    std::string verdict;
    long memory = 0;
    std::getline(result, verdict);
    result >> memory;
    EXPECT_GT(memory, 0);
    EXPECT_LT(memory, kMostMemory);
    return verdict;
  }

  void Make(const std::string& kind) {
    const std::string command =
        std::string("python3 '") + MAKE_ARCHIVE + "' " + kind + " '" + folder / "package.drv" + "'";
    ASSERT_EQ(std::system(command.c_str()), 0);
  }
};

TEST_F(LittleMemory, IsEnoughForMembersOfAnySize) {
  auto members = SmallDriver();
  for (const char* name : {"a", "b", "c"}) {
    members.push_back(
        {.name = name, .content = std::string(std::size_t{39} << 20, name[0]), .isDeflated = true});
  }
  folder.WriteFile("package.drv", ArchiveOf(members));
  EXPECT_EQ(Verdict(), "valid");
  EXPECT_EQ(std::filesystem::file_size(folder / "target/c"), std::uintmax_t{39} << 20);
}

TEST_F(LittleMemory, IsEnoughForManyMembers) {
  Make("long-names");
  EXPECT_EQ(Verdict(), "valid");
}

TEST_F(LittleMemory, IsEnoughToRefuseTooManyMembers) {
  Make("too-many");
  EXPECT_EQ(Verdict(), "The package has more than 131072 members.");
}

TEST_F(LittleMemory, IsEnoughToRefuseTooManyFolders) {
  Make("deep");
  EXPECT_EQ(Verdict(), "The package has more than 131072 folders.");
}

}  // namespace
}  // namespace tarvo::test
