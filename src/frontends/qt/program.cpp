#include "frontends/qt/program.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>

#include "frontends/common/program_run.h"
#include "frontends/qt/text.h"
#include "frontends/qt/user_language.h"

namespace tarvo::qt {

void ShowFailure(const std::string& message, const std::string& title) {
  InstallUserLanguage();
  QApplication::restoreOverrideCursor();
  QMessageBox box(QMessageBox::Critical, ToText(title), ToLines(message), QMessageBox::Ok);
  box.setObjectName("MsgBox");
  box.setTextFormat(Qt::PlainText);
  for (QAbstractButton* button : box.buttons()) button->setIcon(QIcon());
  box.exec();
}

int RunProgram(Platform& platform, const std::string& arguments) {
  return RunWithWindows<QtFrontEnd>(platform, arguments, ShowFailure);
}

}  // namespace tarvo::qt
