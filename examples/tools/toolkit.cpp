#include "tools/toolkit.h"

#include <QWidget>

namespace tarvo::tools {

namespace {

char programName[] = "tool";

}  // namespace

Toolkit::Toolkit() : arguments_{programName, nullptr} {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && !qEnvironmentVariableIsEmpty("DISPLAY")) {
    qputenv("QT_QPA_PLATFORM", "xcb");
  }
  application_ = std::make_unique<QApplication>(count_, arguments_);
}

void Toolkit::Run(QWidget& window) {
  window.show();
  QApplication::exec();
}

QString WindowTitle(const Tool& tool, const char* toolTitle) {
  return QString::fromStdString(tool.DriverName()) + " - " + toolTitle;
}

}  // namespace tarvo::tools
