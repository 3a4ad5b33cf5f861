#pragma once

#include "app/globals/globals.h"
#include "forms/controls.h"
#include "forms/form.h"

namespace tarvo {

// The About window: title, version and rights notice.
class frmAbout : public Form {
 public:
  explicit frmAbout(Globals& globals);

  void Form_Load() override;
  void cmdOK_Click();

  ImageControl picIcon;
  Label lblTitle;
  Label lblVersion;
  Label lblDisclaimer;
  Label lblCopyright;
  Line Line1[2];
  Button cmdOK;

 private:
  void Design();

  Globals& globals_;
};

}  // namespace tarvo
