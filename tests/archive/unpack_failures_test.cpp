#include <filesystem>

#include "archive_maker.h"
#include "base/runtime_error.h"
#include "platform/forwarding_platform.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;
using Tree = std::map<std::string, std::string>;

// Fails the step with a number, and all that follow it when the trouble lasts. Removing never
// fails.
class FailingPlatform : public ForwardingPlatform {
 public:
  FailingPlatform(int failing, int error, bool lasts)
      : ForwardingPlatform(SystemPlatform()), failing_(failing), error_(error), lasts_(lasts) {}

  bool HasFailed() const { return steps_ > failing_; }

  std::unique_ptr<File> MakeFile(std::string_view path, FileUse use) override {
    Step();
    return std::make_unique<FailingFile>(*this, ForwardingPlatform::MakeFile(path, use));
  }
  std::unique_ptr<HeldFolder> HoldFolder(std::string_view path) override {
    Step();
    return ForwardingPlatform::HoldFolder(path);
  }
  void MakeFolder(std::string_view path) override {
    Step();
    ForwardingPlatform::MakeFolder(path);
  }
  void RenameFile(std::string_view path, std::string_view newPath) override {
    Step();
    ForwardingPlatform::RenameFile(path, newPath);
  }

 private:
  class FailingFile : public File {
   public:
    FailingFile(FailingPlatform& platform, std::unique_ptr<File> file)
        : platform_(platform), file_(std::move(file)) {}
    std::uint64_t Size() override { return file_->Size(); }
    std::size_t ReadInto(std::uint64_t offset, std::span<char> room) override {
      return file_->ReadInto(offset, room);
    }
    void WriteAt(std::uint64_t offset, std::string_view bytes) override {
      const std::size_t half = bytes.size() / 2;
      file_->WriteAt(offset, bytes.substr(0, half));
      platform_.Step();
      file_->WriteAt(offset + half, bytes.substr(half));
    }

   private:
    FailingPlatform& platform_;
    std::unique_ptr<File> file_;
  };

  void Step() {
    const int step = steps_++;
    if (step == failing_ || (lasts_ && step > failing_)) throw RuntimeError(error_);
  }

  int failing_;
  int error_;
  bool lasts_;
  int steps_ = 0;
};

std::vector<MadeMember> Driver() {
  auto members = SmallDriver();
  members.push_back({.name = "Icons/small.bmp", .content = "new picture", .isDeflated = true});
  members.push_back({.name = "Data/sample.csv", .content = "new sample"});
  return members;
}

class UnpackFailures : public Packages {
 protected:
  // Unpacks with every step failing once; `examine` looks at the target after each failure.
  template <typename Prepare, typename Examine>
  void FailEveryStep(Prepare prepare, Examine examine) {
    folder.WriteFile("package.drv", ArchiveOf(Driver()));
    for (const int error : {61, 57}) {
      for (const bool lasts : {false, true}) {
        int failures = 0;
        for (bool hasFailed = true; hasFailed; ++failures) {
          fs::remove_all(folder / "target");
          prepare();
          FailingPlatform platform(failures, error, lasts);
          Package package(platform, folder / "package.drv");
          ASSERT_FALSE(package.Check()) << "a failure to write is no fault of the package";
          int number = 0;
          try {
            package.Unpack(folder / "target");
          } catch (const RuntimeError& thrown) {
            number = thrown.Number();
          }
          hasFailed = platform.HasFailed();
          EXPECT_EQ(number, hasFailed ? error : 0);
          examine(hasFailed);
        }
        EXPECT_GT(failures, 12) << "folders, files, writes and renames";
      }
    }
  }
};

TEST_F(UnpackFailures, OfAFirstInstallBeforeTheRenamesLeaveNothingBehind) {
  FailEveryStep([] {},
                [&](bool hasFailed) {
                  if (!fs::exists(folder / "target")) {
                    EXPECT_TRUE(hasFailed);
                    return;
                  }
                  for (const auto& [name, content] : TreeOf(folder / "target")) {
                    EXPECT_EQ(name.find(".tarvo-new-"), std::string::npos) << name;
                  }
                  EXPECT_TRUE(fs::exists(folder / "target/driver.inf") ||
                              fs::exists(folder / "target/Download.EXE"));
                });
}

TEST_F(UnpackFailures, LeaveEveryFileOfAnInstalledDriverOldOrNew) {
  const Tree old{{"driver.inf", "old"},        {"Download.EXE", "old"}, {"Icons", "<folder>"},
                 {"Icons/small.bmp", "old"},   {"Data", "<folder>"},    {"Data/sample.csv", "old"},
                 {"Data/measured.csv", "kept"}};
  Tree fresh = old;
  for (const MadeMember& member : Driver()) fresh[member.name] = member.content;
  FailEveryStep(
      [&] {
        for (const auto& [name, content] : old) {
          if (content != "<folder>") folder.WriteFile("target/" + name, content);
        }
      },
      [&](bool hasFailed) {
        const Tree tree = TreeOf(folder / "target");
        ASSERT_EQ(tree.size(), old.size());
        for (const auto& [name, content] : tree) {
          EXPECT_TRUE(content == old.at(name) || content == fresh.at(name)) << name;
          if (!hasFailed) {
            EXPECT_EQ(content, fresh.at(name));
          }
        }
      });
}

TEST_F(UnpackFailures, OnAFullDiskLeaveAnInstalledDriverAsItWas) {
  // Steps up to the last write come before the first rename.
  folder.WriteFile("package.drv", ArchiveOf(SmallDriver()));
  for (int step = 0; step < 4; ++step) {
    folder.WriteFile("target/driver.inf", "old");
    FailingPlatform platform(step, 61, true);
    Package package(platform, folder / "package.drv");
    ASSERT_FALSE(package.Check());
    EXPECT_THROW(package.Unpack(folder / "target"), RuntimeError);
    EXPECT_EQ(TreeOf(folder / "target"), (Tree{{"driver.inf", "old"}})) << step;
  }
}

// A drive that has been taken out: not even its root is there.
class NoDrive : public ForwardingPlatform {
 public:
  NoDrive() : ForwardingPlatform(SystemPlatform()) {}
  std::optional<unsigned> Attributes(std::string_view) override { return std::nullopt; }
  std::vector<FolderEntry> Entries(std::string_view) override { throw RuntimeError(76); }
  void MakeFolder(std::string_view) override { throw RuntimeError(76); }
};

TEST_F(UnpackFailures, OnADriveThatIsNotThereAreTold) {
  folder.WriteFile("package.drv", ArchiveOf(SmallDriver()));
  NoDrive platform;
  Package package(platform, folder / "package.drv");
  ASSERT_FALSE(package.Check());
  EXPECT_THROW(package.Unpack(folder / "a/b/target"), RuntimeError);
}

// Fails when a file is read for the Nth time.
class UnreadablePlatform : public ForwardingPlatform {
 public:
  explicit UnreadablePlatform(int reads) : ForwardingPlatform(SystemPlatform()), reads_(reads) {}

  std::unique_ptr<File> OpenFile(std::string_view path, OpenFor use) override {
    return std::make_unique<UnreadableFile>(ForwardingPlatform::OpenFile(path, use), reads_);
  }

 private:
  class UnreadableFile : public File {
   public:
    UnreadableFile(std::unique_ptr<File> file, int& reads)
        : file_(std::move(file)), reads_(reads) {}
    std::uint64_t Size() override { return file_->Size(); }
    std::size_t ReadInto(std::uint64_t offset, std::span<char> room) override {
      if (reads_-- == 0) throw RuntimeError(57);
      return file_->ReadInto(offset, room);
    }
    void WriteAt(std::uint64_t, std::string_view) override {}

   private:
    std::unique_ptr<File> file_;
    int& reads_;
  };

  int reads_;
};

TEST_F(UnpackFailures, OfReadingThePackageAreFaultsOfThePackage) {
  auto members = SmallDriver();
  members.push_back({.name = "large", .content = std::string(600000, 'x')});
  folder.WriteFile("package.drv", ArchiveOf(members));
  int reads = 0;
  for (;; ++reads) {
    UnreadablePlatform platform(reads);
    const auto fault = Package(platform, folder / "package.drv").Check();
    if (!fault) break;
    EXPECT_EQ(fault->sentence, "The package cannot be read: Device I/O error.");
  }
  EXPECT_GT(reads, 3);
}

}  // namespace
}  // namespace tarvo::test
