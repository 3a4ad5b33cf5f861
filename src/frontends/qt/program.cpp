#include "frontends/qt/program.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <cstdio>
#include <memory>

#include "frontends/qt/text.h"
#include "frontends/qt/user_language.h"

namespace tarvo::qt {
namespace {

constexpr const char* kPlainTitle = "Tarvo";

}  // namespace

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
  std::unique_ptr<Tarvo> tarvo;
  // Goes first: what it draws is the state of the windows.
  QtFrontEnd frontEnd;
  AfterStart next = AfterStart::kEnd;
  frontEnd.RunGuarded([&] {
    tarvo = std::make_unique<Tarvo>(platform, frontEnd, arguments);
    next = tarvo->Start();
  });
  if (frontEnd.Failure().empty() && next == AfterStart::kEventLoop) frontEnd.RunEventLoop();
  if (frontEnd.Failure().empty()) return 0;
  std::fprintf(stderr, "%s\n", frontEnd.Failure().c_str());
  ShowFailure(frontEnd.Failure(),
              tarvo ? tarvo->RunGlobals().translator.ApplicationTitle() : kPlainTitle);
  return 1;
}

}  // namespace tarvo::qt
