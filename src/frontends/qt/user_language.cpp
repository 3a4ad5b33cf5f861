#include "frontends/qt/user_language.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace tarvo::qt {

void InstallUserLanguage() {
  QCoreApplication* const application = QCoreApplication::instance();
  if (application->findChild<QTranslator*>("userLanguage")) return;
  auto* const translator = new QTranslator(application);
  translator->setObjectName("userLanguage");
  if (translator->load(QLocale::system(), "qtbase", "_",
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(translator);
  }
}

}  // namespace tarvo::qt
