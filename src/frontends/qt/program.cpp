#include "frontends/qt/program.h"

#include <QApplication>
#include <QMessageBox>
#include <cstdio>
#include <memory>

#include "app/start/version_report.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "forms/null_front_end.h"
#include "frontends/qt/text.h"
#include "frontends/qt/user_language.h"

namespace tarvo::qt {
namespace {

constexpr const char* kPlainTitle = "Tarvo";

}  // namespace

std::string JoinArguments(int count, const char* const* arguments) {
  std::string joined;
  for (int i = 1; i < count; ++i) {
    if (i > 1) joined += ' ';
    joined += arguments[i];
  }
  return joined;
}

std::optional<std::string> RunWithoutWindows(Platform& platform, const std::string& arguments) {
  if (LowerCase(arguments) != kVersionReport) return std::nullopt;
  NullFrontEnd frontEnd;
  try {
    Tarvo(platform, frontEnd, arguments).Start();
  } catch (const RuntimeError& error) {
    return error.StandardMessage();
  }
  return std::string();
}

void ShowFailure(const std::string& message, const std::string& title) {
  InstallUserLanguage();
  QApplication::restoreOverrideCursor();
  QMessageBox box(QMessageBox::Critical, ToText(title), ToLines(message), QMessageBox::Ok);
  box.setObjectName("MsgBox");
  box.setTextFormat(Qt::PlainText);
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
