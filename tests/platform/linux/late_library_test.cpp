#include "platform/linux/late_library.h"

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

// The linker looks for libraries where the environment says so at the start of a process.
class DesktopLibraries : public ::testing::Test {
 protected:
  std::string Reached() const {
    return OutputOf("DBUS_SESSION_BUS_ADDRESS='" + bus.Address() + "' DISPLAY=" + display.Name() +
                    " LD_LIBRARY_PATH='" + libraries.Path() + "' " DESKTOP_PROBE);
  }

  const TemporaryFolder libraries;
  const PrivateBus bus;
  const PrivateDisplay display{WindowManager::kNone};
};

TEST_F(DesktopLibraries, ReachTheDesktop) { EXPECT_EQ(Reached(), "bus, nobody asked, display"); }

TEST_F(DesktopLibraries, MayBeDamaged) {
  libraries.WriteFile("libsystemd.so.0", "no library");
  libraries.WriteFile("libxcb.so.1", "no library");
  EXPECT_EQ(Reached(), "no bus, nobody asked, no display");
}

TEST_F(DesktopLibraries, MayBeWithoutAFunction) {
  const std::string empty = "'" + libraries.Path() + "/libsystemd.so.0'";
  OutputOf("echo 'int tarvo_empty;' | c++ -shared -x c++ - -o " + empty + " && cp " + empty + " '" +
           libraries.Path() + "/libxcb.so.1'");
  EXPECT_EQ(Reached(), "no bus, nobody asked, no display");
}

}  // namespace
}  // namespace tarvo::test
