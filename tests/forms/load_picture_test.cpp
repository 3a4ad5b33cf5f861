#include "forms/load_picture.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "error_of.h"
#include "picture_bytes.h"
#include "platform/forwarding_platform.h"
#include "support/temporary_folder.h"

namespace tarvo::test {
namespace {

// Counts the bytes that are asked for.
class CountingFile : public File {
 public:
  CountingFile(std::unique_ptr<File> file, std::uint64_t& count)
      : file_(std::move(file)), count_(count) {}
  std::uint64_t Size() override { return file_->Size(); }
  std::size_t ReadInto(std::uint64_t offset, std::span<char> room) override {
    count_ += room.size();
    return file_->ReadInto(offset, room);
  }
  void WriteAt(std::uint64_t offset, std::string_view bytes) override {
    file_->WriteAt(offset, bytes);
  }

 private:
  std::unique_ptr<File> file_;
  std::uint64_t& count_;
};

class CountingPlatform : public ForwardingPlatform {
 public:
  CountingPlatform() : ForwardingPlatform(SystemPlatform()) {}
  std::unique_ptr<File> OpenFile(std::string_view path, OpenFor use) override {
    return std::make_unique<CountingFile>(ForwardingPlatform::OpenFile(path, use), bytesRead);
  }
  std::uint64_t bytesRead = 0;
};

class LoadPictureTest : public ::testing::Test {
 protected:
  int ErrorOfLoading(const std::string& name) {
    return ErrorOf([&] { LoadPicture(platform, folder / name); });
  }

  const TemporaryFolder folder;
  CountingPlatform platform;
};

TEST_F(LoadPictureTest, GivesTheBytesOfAReadableFile) {
  const std::string bytes = MakeIconFile({MakePng(16, 16)});
  folder.WriteFile("driver.ICO", bytes);
  const PicturePointer picture = LoadPicture(platform, folder / "driver.ICO");
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->bytes, bytes);
  EXPECT_EQ(picture->icon, "");
}

TEST_F(LoadPictureTest, FindsTheFileInAnyLetterCase) {
  folder.WriteFile("DRIVER.ico", MakeBitmapFile({}));
  EXPECT_EQ(ErrorOfLoading("driver.ICO"), 0);
}

TEST_F(LoadPictureTest, SaysThatAFileIsMissing) {
  EXPECT_EQ(ErrorOfLoading("driver.ICO"), 53);
  EXPECT_EQ(ErrorOfLoading("Meter/driver.ICO"), 76);
}

TEST_F(LoadPictureTest, RefusesWhatIsNoPicture) {
  folder.WriteFile("driver.ICO", "not a picture");
  folder.WriteFile("empty.ICO", "");
  folder.WriteFile("cut.BMP", MakeBitmapFile({}).substr(0, 60));
  EXPECT_EQ(ErrorOfLoading("driver.ICO"), 481);
  EXPECT_EQ(ErrorOfLoading("empty.ICO"), 481);
  EXPECT_EQ(ErrorOfLoading("cut.BMP"), 481);
}

TEST_F(LoadPictureTest, RefusesATooLargeFileWithoutReadingIt) {
  folder.WriteFile("huge.BMP", MakeBitmapFile({}));
  std::filesystem::resize_file(folder / "huge.BMP", 17 * 1024 * 1024);
  EXPECT_EQ(ErrorOfLoading("huge.BMP"), 481);
  EXPECT_EQ(platform.bytesRead, 0u);
  std::filesystem::resize_file(folder / "huge.BMP", kMaxPictureBytes);
  EXPECT_EQ(ErrorOfLoading("huge.BMP"), 0);
  EXPECT_EQ(platform.bytesRead, kMaxPictureBytes);
}

TEST(OwnIcon, IsKnownByItsName) {
  const PicturePointer icon = OwnIcon("download");
  EXPECT_EQ(icon->icon, "download");
  EXPECT_EQ(icon->bytes, "");
}

}  // namespace
}  // namespace tarvo::test
