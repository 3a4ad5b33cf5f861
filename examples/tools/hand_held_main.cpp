#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "base/paths.h"
#include "platform/names.h"
#include "tools/toolkit.h"

namespace tarvo::tools {

namespace {

// Lists the "*.hvd" files that lie beside the program: what it would put on a hand-held device.
int ShowSamples(Tool& tool, const ToolOptions& options, const QString& title) {
  Toolkit toolkit;
  QWidget window;
  window.setWindowTitle(title);
  auto* lstSamples = new QListWidget(&window);
  lstSamples->setObjectName("lstSamples");
  lstSamples->setAccessibleName("Files");
  for (const FolderEntry& entry :
       ListFolder(tool.System(), tool.DriverFolder(), "*.hvd", kNormal)) {
    lstSamples->addItem(QString::fromStdString(entry.name));
  }
  auto* cmdClose = new QPushButton("Close", &window);
  cmdClose->setObjectName("cmdClose");
  QObject::connect(cmdClose, &QPushButton::clicked, &window, &QWidget::close);
  auto* layout = new QVBoxLayout(&window);
  layout->addWidget(new QLabel("Ready for the hand-held device:", &window));
  layout->addWidget(lstSamples);
  layout->addWidget(cmdClose, 0, Qt::AlignRight);
  if (options.closes) QTimer::singleShot(0, &window, SLOT(close()));
  toolkit.Run(window);
  return 0;
}

}  // namespace

}  // namespace tarvo::tools

int main(int argc, char** argv) {
  using namespace tarvo::tools;
  const QString title = QString::fromUtf8(argv[0]).section('/', -1).section('.', 0, 0);
  return RunTool("_HANDHELD", argc, argv, [&](Tool& tool, const ToolOptions& options) {
    return ShowSamples(tool, options, title);
  });
}
