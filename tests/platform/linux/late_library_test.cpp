#include "platform/linux/late_library.h"

#include <filesystem>
#include <string>

#include "platform/child_process.h"
#include "platform/private_bus.h"
#include "platform/private_display.h"
#include "support/temporary_folder.h"

namespace tarvo::test {
namespace {

TEST(LateLibrary, HasTheFunctionsOfTheLibrary) {
  LateLibrary library("libm.so.6");
  const LateFunction<double(double)> magnitude(library, "fabs");
  ASSERT_TRUE(library.IsWhole());
  EXPECT_EQ(magnitude(-3.5), 3.5);
}

TEST(LateLibrary, IsNotWholeWithoutAFunction) {
  LateLibrary library("libm.so.6");
  EXPECT_EQ(library.Find("root_of_no_number"), nullptr);
  EXPECT_NE(library.Find("fabs"), nullptr);
  EXPECT_FALSE(library.IsWhole());
}

TEST(LateLibrary, IsNotWholeWhenItIsNotThere) {
  LateLibrary library("libtarvo-has-no-such.so.1");
  EXPECT_EQ(library.Find("fabs"), nullptr);
  EXPECT_FALSE(library.IsWhole());
}

// The loader looks for libraries where the environment says so at the start of a process.
class DesktopLibraries : public ::testing::Test {
 protected:
  std::string Reached() const {
    return OutputOf("DBUS_SESSION_BUS_ADDRESS='" + bus.Address() + "' DISPLAY=" + display.Name() +
                    " LD_LIBRARY_PATH='" + libraries.Path() + "' " DESKTOP_PROBE);
  }

  static constexpr const char* kWithoutLibraries =
      "libsystemd is missing or damaged, so no file manager can be asked; install the package "
      "libsystemd0.\n"
      "libxcb is missing or damaged: windows cannot be shown; install the package libxcb1.\n"
      "nobody asked, 0 owners, 0 numbers\n";

  const TemporaryFolder libraries;
  const PrivateBus bus;
  const PrivateDisplay display{WindowManager::kNone};
};

TEST_F(DesktopLibraries, ReachTheDesktop) {
  EXPECT_EQ(Reached(), "The session bus answers.\nThe X11 display " + display.Name() +
                           " answers.\nnobody asked, 1 owners, 0 numbers\n");
}

TEST_F(DesktopLibraries, MayBeDamaged) {
  libraries.WriteFile("libsystemd.so.0", "no library");
  libraries.WriteFile("libxcb.so.1", "no library");
  EXPECT_EQ(Reached(), kWithoutLibraries);
}

TEST_F(DesktopLibraries, MayBeWithoutAFunction) {
  for (const char* name : {"libsystemd.so.0", "libxcb.so.1"}) {
    std::filesystem::copy_file(LIBRARY_WITHOUT_FUNCTIONS, libraries / name);
  }
  EXPECT_EQ(Reached(), kWithoutLibraries);
}

}  // namespace
}  // namespace tarvo::test
