#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "error_of.h"
#include "forms/load_picture.h"
#include "platform/platform.h"
#include "support/temporary_folder.h"

namespace tarvo::test {
namespace {

TEST(PictureInTheWay, IsNotWaitedForWhenItIsAPipeADeviceOrAFolder) {
  const TemporaryFolder folder;
  const auto errorOfLoading = [&](const std::string& name) {
    return ErrorOf([&] { LoadPicture(SystemPlatform(), folder / name); });
  };
  ASSERT_EQ(::mkfifo((folder / "pipe.ICO").c_str(), 0666), 0);
  folder.MakeFolder("folder.ICO");
  std::filesystem::create_symlink("/dev/zero", folder / "device.ICO");
  std::filesystem::create_symlink("circle.ICO", folder / "circle.ICO");
  EXPECT_EQ(errorOfLoading("pipe.ICO"), 75);
  EXPECT_EQ(errorOfLoading("folder.ICO"), 75);
  EXPECT_EQ(errorOfLoading("device.ICO"), 75);
  EXPECT_EQ(errorOfLoading("circle.ICO"), 76);
}

}  // namespace
}  // namespace tarvo::test
