#include <QApplication>
#include <clocale>

#include "frontends/qt/pictures.h"
#include "frontends/qt/program.h"

// The toolkit gets no argument of the user's, of which it would take some for its own. It is asked
// for the X11 windowing system where there is one, because Wayland tells no window its position.
int main(int argc, char** argv) {
  std::setlocale(LC_ALL, "");
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
  return tarvo::qt::RunProgram(tarvo::SystemPlatform(), tarvo::qt::JoinArguments(argc, argv));
}
