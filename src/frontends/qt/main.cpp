#include <QApplication>
#include <cstdio>
#include <string>

#include "frontends/common/program_run.h"
#include "frontends/qt/pictures.h"
#include "frontends/qt/program.h"
#include "platform/program_start.h"

namespace {

bool HasDisplay() {
  return !qEnvironmentVariableIsEmpty("DISPLAY") ||
         !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
         !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

}  // namespace

// The toolkit gets no argument of the user's, of which it would take some for its own. It is asked
// for the X11 windowing system where there is one, because Wayland tells no window its position.
int main(int argc, char** argv) {
  const std::string arguments = tarvo::JoinArguments(tarvo::ProgramArguments(argc, argv));
  const auto failure = tarvo::RunWithoutWindows(tarvo::SystemPlatform(), arguments);
  if (failure && failure->empty()) return 0;
  if (failure) {
    std::fprintf(stderr, "%s\n", failure->c_str());
    if (!HasDisplay()) return 1;
  }

  char platformOption[] = "-platform";
  char platformName[] = "xcb";
  char* options[] = {argv[0], platformOption, platformName, nullptr};
  const bool prefersX11 =
      qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && !qEnvironmentVariableIsEmpty("DISPLAY");
  int count = prefersX11 ? 3 : 1;
  if (!prefersX11) options[1] = nullptr;
  QApplication application(count, options);
  QApplication::setApplicationName("tarvo");
  QApplication::setDesktopFileName("tarvo");
  QApplication::setWindowIcon(tarvo::qt::WindowIcon());
  QApplication::setQuitOnLastWindowClosed(false);
  if (failure) {
    tarvo::qt::ShowFailure(*failure, tarvo::kPlainTitle);
    return 1;
  }
  return tarvo::qt::RunProgram(tarvo::SystemPlatform(), arguments);
}
