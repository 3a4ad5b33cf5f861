#include <filesystem>
#include <random>

#include "archive_maker.h"

namespace tarvo::test {
namespace {

// A small archive with everything that a package may have.
std::string Sample() {
  std::vector<MadeMember> members = SmallDriver();
  members.push_back({.name = "Data/", .content = ""});
  members.push_back({.name = "Data/a.csv", .content = "1;2\r\n", .isDeflated = true});
  members.back().descriptor = DescriptorOf(members.back(), true, false);
  members.push_back({.name = "Gr\x94\xE1"
                             "e.txt",
                     .content = "stored"});
  members.back().descriptor = DescriptorOf(members.back(), false, true);
  return ArchiveOf(members, "comment");
}

class DamagedPackages : public Packages {
 protected:
  // Whether an archive is refused or, when it is valid, unpacks to exactly the sample's files.
  void ExpectRefusedOrUnharmed(const std::string& bytes, const std::string& what) {
    folder.WriteFile("package.drv", bytes);
    Package package(SystemPlatform(), folder / "package.drv");
    const auto fault = package.Check();
    if (fault) {
      ++refused_;
      EXPECT_TRUE(fault->sentence.starts_with("The ") && fault->sentence.ends_with("."))
          << fault->sentence;
      return;
    }
    ++valid_;
    std::filesystem::remove_all(folder / "target");
    package.Unpack(folder / "target");
    EXPECT_EQ(TreeOf(folder / "target"), whole_) << what;
  }

  void SetUp() override {
    Install(sample_);
    whole_ = TreeOf(folder / "target");
    ASSERT_EQ(whole_.size(), 5u);
  }

  const std::string sample_ = Sample();
  std::map<std::string, std::string> whole_;
  int refused_ = 0;
  int valid_ = 0;
};

TEST_F(DamagedPackages, CutOffAnywhereAreRefused) {
  for (std::size_t size = 0; size < sample_.size(); ++size) {
    EXPECT_NE(FaultOf(sample_.substr(0, size)), "") << size;
    EXPECT_NE(FaultOf(sample_.substr(sample_.size() - size)), "") << size;
  }
}

TEST_F(DamagedPackages, WithAnyBitFlippedAreRefusedUnlessTheirFilesAreTheSame) {
  for (std::size_t at = 0; at < sample_.size(); ++at) {
    for (int bit = 0; bit < 8; ++bit) {
      std::string bytes = sample_;
      bytes[at] = static_cast<char>(bytes[at] ^ 1 << bit);
      ExpectRefusedOrUnharmed(bytes, "bit " + std::to_string(bit) + " of " + std::to_string(at));
    }
  }
  EXPECT_GT(refused_, 3000);
  EXPECT_GT(valid_, 0) << "times and comments mean nothing for the files";
}

TEST_F(DamagedPackages, WithAnyByteSetToAnExtremeAreRefusedUnlessTheirFilesAreTheSame) {
  for (std::size_t at = 0; at < sample_.size(); ++at) {
    for (const char value : {'\0', '\x7F', '\xFF'}) {
      std::string bytes = sample_;
      bytes[at] = value;
      ExpectRefusedOrUnharmed(bytes, "byte " + std::to_string(at));
    }
  }
  EXPECT_GT(refused_, 500);
}

// Several changes at once reach what one cannot; here only a crash or a false sentence would show.
TEST_F(DamagedPackages, WithManyBytesChangedNeverCrashTheCheck) {
  std::mt19937 random(20240229);
  const auto below = [&](std::size_t most) { return static_cast<std::size_t>(random() % most); };
  for (int run = 0; run < 3000; ++run) {
    std::string bytes = sample_;
    for (std::size_t change = below(6) + 1; change > 0; --change) {
      const std::size_t at = below(bytes.size());
      switch (below(4)) {
        case 0:
          bytes.erase(at, below(20) + 1);
          break;
        case 1:
          bytes.insert(at, bytes.substr(below(bytes.size()), below(60)));
          break;
        default:
          bytes[at] = static_cast<char>(random());
      }
      if (bytes.empty()) bytes = "P";
    }
    const std::string fault = FaultOf(bytes);
    if (fault.empty()) {
      ++valid_;
    } else {
      ++refused_;
      EXPECT_TRUE(fault.starts_with("The ") && fault.ends_with(".")) << fault;
    }
  }
  EXPECT_GT(refused_, 2000);
}

}  // namespace
}  // namespace tarvo::test
