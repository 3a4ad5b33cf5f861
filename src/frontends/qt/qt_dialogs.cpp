#include <QAbstractButton>
#include <QCursor>
#include <QDir>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>

#include "base/runtime_error.h"
#include "frontends/qt/menus.h"
#include "frontends/qt/qt_front_end.h"
#include "frontends/qt/text.h"
#include "frontends/qt/user_language.h"

namespace tarvo::qt {
namespace {

QMessageBox::Icon ToIcon(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::kQuestion:
      return QMessageBox::Question;
    case MessageIcon::kExclamation:
      return QMessageBox::Warning;
    case MessageIcon::kInformation:
      return QMessageBox::Information;
    case MessageIcon::kNone:
      break;
  }
  return QMessageBox::NoIcon;
}

}  // namespace

// Waits until the dialog has an answer, or no window is left that the answer could matter to.
void QtFrontEnd::WaitForDialog(const bool& finished) {
  const bool hasWindows = !LoadedForms().empty();
  SyncAll();
  ++seam_.dialogs;
  dispatcher_.Wait([&] { return finished || (hasWindows && LoadedForms().empty()); });
  --seam_.dialogs;
}

Answer QtFrontEnd::MsgBox(std::string_view text, MessageButtons buttons, MessageIcon icon,
                          std::string_view title) {
  dispatcher_.ThrowIfEnding();
  InstallUserLanguage();
  const bool asks = buttons == MessageButtons::kYesNo;
  QMessageBox box(ToIcon(icon), ToText(title), ToLines(text),
                  asks ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok, Owner());
  box.setObjectName("MsgBox");
  box.setTextFormat(Qt::PlainText);
  box.setWindowModality(Qt::ApplicationModal);
  box.setEscapeButton(asks ? QMessageBox::No : QMessageBox::Ok);
  for (QAbstractButton* button : box.buttons()) button->setIcon(QIcon());
  bool finished = false;
  QObject::connect(&box, &QDialog::finished, &box, [&] {
    finished = true;
    dispatcher_.EndWaitsThatAreOver();
  });
  box.show();
  WaitForDialog(finished);
  dispatcher_.ThrowIfEnding();
  if (!asks) return Answer::kOk;
  return box.standardButton(box.clickedButton()) == QMessageBox::Yes ? Answer::kYes : Answer::kNo;
}

namespace {

// Where the search begins. The folder of all drives, which has a name of another kind, is the root.
QString StartFolder(const CommonDialog& dialog) {
  const QString folder = ToText(dialog.InitDir);
  return QDir(folder).isAbsolute() && QDir(folder).exists() ? folder : QDir::rootPath();
}

}  // namespace

// A file name with a wildcard is what the filter says already, so the name starts empty.
void QtFrontEnd::ShowOpen(CommonDialog& dialog) {
  dispatcher_.ThrowIfEnding();
  InstallUserLanguage();
  QFileDialog chooser(Owner(), ToText(dialog.DialogTitle), StartFolder(dialog),
                      ToText(dialog.Filter));
  chooser.setObjectName(ToText(dialog.Name));
  chooser.setFileMode(QFileDialog::ExistingFile);
  chooser.setWindowModality(Qt::ApplicationModal);
  chooser.setDefaultSuffix(ToText(dialog.DefaultExt));
  bool finished = false;
  QObject::connect(&chooser, &QDialog::finished, &chooser, [&] {
    finished = true;
    dispatcher_.EndWaitsThatAreOver();
  });
  chooser.show();
  WaitForDialog(finished);
  dispatcher_.ThrowIfEnding();
  const QStringList files = chooser.selectedFiles();
  if (chooser.result() != QDialog::Accepted || files.isEmpty())
    throw RuntimeError(kDialogCancelled);
  dialog.FileName = FromText(files.first());
}

void QtFrontEnd::PopupMenu(MenuItem& menu, const MenuItem* defaultEntry) {
  dispatcher_.ThrowIfEnding();
  QMenu popup(Owner());
  Menus menus(dispatcher_);
  popup.setDefaultAction(menus.Fill(popup, menu, defaultEntry));
  bool closed = false;
  // The chosen entry's handler runs within the same event.
  QObject::connect(&popup, &QMenu::aboutToHide, &popup, [&] {
    closed = true;
    dispatcher_.EndWaitsThatAreOver();
  });
  popup.popup(seam_.popupPlace.value_or(QCursor::pos()));
  WaitForDialog(closed);
  dispatcher_.ThrowIfEnding();
}

}  // namespace tarvo::qt
