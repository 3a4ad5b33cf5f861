// The least Qt program that shows 200 drivers: a list view of 200 icons in a window of Tarvo's
// size.
//
// minimal_window COLOUR            icons of that colour (#rrggbb), drawn in memory
// minimal_window COLOUR FOLDER     each icon read from the file driver.ICO of a folder in FOLDER

#include <QApplication>
#include <QColor>
#include <QDir>
#include <QIcon>
#include <QListView>
#include <QPixmap>
#include <QStandardItemModel>

namespace {

constexpr int kDrivers = 200;
constexpr int kWindowSide = 433;  // pixels: 6500 twips
constexpr int kIconSide = 32;

void AddDrawnIcons(QStandardItemModel& model, const QColor& colour) {
  for (int i = 0; i < kDrivers; ++i) {
    QPixmap pixmap(kIconSide, kIconSide);
    pixmap.fill(colour);
    model.appendRow(new QStandardItem(QIcon(pixmap), QString("Driver %1").arg(i)));
  }
}

void AddIconsOf(QStandardItemModel& model, const QDir& drivers) {
  for (const QString& name : drivers.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    const QIcon icon(drivers.filePath(name + "/driver.ICO"));
    model.appendRow(new QStandardItem(icon, name));
  }
}

}  // namespace

int main(int count, char** values) {
  QApplication application(count, values);
  const QStringList arguments = application.arguments();
  if (arguments.size() < 2) qFatal("usage: minimal_window COLOUR [FOLDER]");

  QStandardItemModel model;
  if (arguments.size() == 2) {
    AddDrawnIcons(model, QColor(arguments[1]));
  } else {
    AddIconsOf(model, QDir(arguments[2]));
  }
  QListView view;
  view.setViewMode(QListView::IconMode);
  view.setIconSize({kIconSide, kIconSide});
  view.setModel(&model);
  view.resize(kWindowSide, kWindowSide);
  view.show();
  return QApplication::exec();
}
