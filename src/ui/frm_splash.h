#pragma once

#include "app/globals/globals.h"
#include "forms/controls.h"
#include "forms/form.h"

namespace tarvo {

// The small window with the product's title and version that is on the screen while the main window
// loads.
class frmSplash : public Form {
 public:
  explicit frmSplash(Globals& globals);

  // Sets and translates the texts, then makes the product's name fit: a smaller font first, a wider
  // window when that is not enough.
  void Form_Load() override;

  Frame framainframe;
  ImageControl Image1;
  Label lblProductName;
  Label lblVersion;

 private:
  // How far the product's name sticks out of the frame, in twips.
  float Overflow();
  void FitProductName();

  Globals& globals_;
};

}  // namespace tarvo
