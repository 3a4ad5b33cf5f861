#pragma once

#include <QDialog>

#include "tools/device_settings.h"

class QComboBox;
class QLineEdit;
class QSpinBox;

namespace tarvo::tools {

// The window of ShowProperties.
class PropertiesWindow : public QDialog {
 public:
  explicit PropertiesWindow(Tool& tool);

 private:
  void Store();

  Tool& tool_;
  QComboBox* cboPort_;
  QLineEdit* txtSite_;
  QSpinBox* numInterval_;
};

}  // namespace tarvo::tools
