#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "tools/qt/toolkit.h"
#include "tools/samples.h"
#include "tools/tool_windows.h"
#include "tools/window_texts.h"

namespace tarvo::tools {

int ShowSamples(Tool& tool, const ToolOptions& options, const std::string& title) {
  Toolkit toolkit;
  QWidget window;
  window.setWindowTitle(QString::fromStdString(title));
  auto* lstSamples = new QListWidget(&window);
  lstSamples->setObjectName("lstSamples");
  lstSamples->setAccessibleName("Files");
  for (const std::string& name : SampleFiles(tool)) {
    lstSamples->addItem(QString::fromStdString(name));
  }
  auto* cmdClose = new QPushButton(TextOf(texts::kClose), &window);
  cmdClose->setObjectName("cmdClose");
  QObject::connect(cmdClose, &QPushButton::clicked, &window, &QWidget::close);
  auto* layout = new QVBoxLayout(&window);
  layout->addWidget(new QLabel(TextOf(texts::kSamples), &window));
  layout->addWidget(lstSamples);
  layout->addWidget(cmdClose, 0, Qt::AlignRight);
  if (options.closes) QTimer::singleShot(0, &window, SLOT(close()));
  toolkit.Run(window);
  return 0;
}

}  // namespace tarvo::tools
