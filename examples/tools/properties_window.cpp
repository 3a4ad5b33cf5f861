#include "tools/properties_window.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QSpinBox>

#include "tools/toolkit.h"

namespace tarvo::tools {

PropertiesWindow::PropertiesWindow(Tool& tool)
    : tool_(tool),
      cboPort_(new QComboBox(this)),
      txtSite_(new QLineEdit(this)),
      numInterval_(new QSpinBox(this)) {
  setWindowTitle(WindowTitle(tool, "Properties"));
  const DeviceSettings values = LoadDeviceSettings(tool);
  cboPort_->setObjectName("cboPort");
  cboPort_->setEditable(true);
  cboPort_->addItems({"COM1", "COM2", "COM3", "COM4", "USB"});
  cboPort_->setCurrentText(QString::fromStdString(values.port));
  txtSite_->setObjectName("txtSite");
  txtSite_->setMaxLength(60);
  txtSite_->setText(QString::fromStdString(values.site));
  numInterval_->setObjectName("numInterval");
  numInterval_->setRange(1, 1440);
  numInterval_->setValue(values.interval);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  auto* layout = new QFormLayout(this);
  layout->addRow("&Port:", cboPort_);
  layout->addRow("&Site:", txtSite_);
  layout->addRow("&Minutes between readings:", numInterval_);
  layout->addRow(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(this, &QDialog::accepted, this, [this] { Store(); });
}

void PropertiesWindow::Store() {
  SaveDeviceSettings(tool_, {cboPort_->currentText().toStdString(), txtSite_->text().toStdString(),
                             numInterval_->value()});
}

}  // namespace tarvo::tools
