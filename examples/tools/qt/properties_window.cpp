#include "tools/qt/properties_window.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QSpinBox>
#include <QTimer>

#include "tools/qt/toolkit.h"
#include "tools/tool_windows.h"
#include "tools/window_texts.h"

namespace tarvo::tools {

PropertiesWindow::PropertiesWindow(Tool& tool)
    : tool_(tool),
      cboPort_(new QComboBox(this)),
      txtSite_(new QLineEdit(this)),
      numInterval_(new QSpinBox(this)) {
  setWindowTitle(TextOf(texts::WindowTitle(tool, texts::kProperties)));
  const DeviceSettings values = LoadDeviceSettings(tool);
  cboPort_->setObjectName("cboPort");
  cboPort_->setEditable(true);
  for (const std::string_view port : kPorts) cboPort_->addItem(TextOf(port));
  cboPort_->setCurrentText(QString::fromStdString(values.port));
  txtSite_->setObjectName("txtSite");
  txtSite_->setMaxLength(kLongestSite);
  txtSite_->setText(QString::fromStdString(values.site));
  numInterval_->setObjectName("numInterval");
  numInterval_->setRange(kShortestInterval, kLongestInterval);
  numInterval_->setValue(values.interval);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  auto* layout = new QFormLayout(this);
  layout->addRow(TextOf(texts::kPort), cboPort_);
  layout->addRow(TextOf(texts::kSite), txtSite_);
  layout->addRow(TextOf(texts::kInterval), numInterval_);
  layout->addRow(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(this, &QDialog::accepted, this, [this] { Store(); });
}

void PropertiesWindow::Store() {
  SaveDeviceSettings(tool_, {cboPort_->currentText().toStdString(), txtSite_->text().toStdString(),
                             numInterval_->value()});
}

int ShowProperties(Tool& tool, const ToolOptions& options) {
  Toolkit toolkit;
  PropertiesWindow window(tool);
  if (options.closes) QTimer::singleShot(0, &window, &QDialog::accept);
  toolkit.Run(window);
  return 0;
}

}  // namespace tarvo::tools
