#include <gmock/gmock.h>

#include <QApplication>

// The real widgets on a screen that nobody sees.
int main(int argc, char** argv) {
  ::testing::InitGoogleMock(&argc, argv);
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
