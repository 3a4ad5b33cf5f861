#include "frontends/qt/program.h"

#include <QApplication>
#include <QMessageBox>
#include <cstdio>
#include <memory>

#include "frontends/qt/text.h"
#include "frontends/qt/user_language.h"

namespace tarvo::qt {
namespace {

constexpr const char* kPlainTitle = "Tarvo";

void ShowFailure(const std::string& message, const std::string& title) {
  std::fprintf(stderr, "%s\n", message.c_str());
  InstallUserLanguage();
  QApplication::restoreOverrideCursor();
  QMessageBox box(QMessageBox::Critical, ToText(title), ToLines(message), QMessageBox::Ok);
  box.setObjectName("MsgBox");
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

}  // namespace

std::string JoinArguments(int count, const char* const* arguments) {
  std::string joined;
  for (int i = 1; i < count; ++i) {
    if (i > 1) joined += ' ';
    joined += arguments[i];
  }
  return joined;
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
  ShowFailure(frontEnd.Failure(),
              tarvo ? tarvo->RunGlobals().translator.ApplicationTitle() : kPlainTitle);
  return 1;
}

}  // namespace tarvo::qt
