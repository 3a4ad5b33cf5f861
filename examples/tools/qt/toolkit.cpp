#include "tools/qt/toolkit.h"

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

QString TextOf(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace tarvo::tools
