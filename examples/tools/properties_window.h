#pragma once

#include <QDialog>

#include "tools/device_settings.h"

class QComboBox;
class QLineEdit;
class QSpinBox;

namespace tarvo::tools {

// The driver's own settings. "OK" stores them, "Cancel" and the close box leave them as they were.
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
