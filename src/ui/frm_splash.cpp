#include "ui/frm_splash.h"

namespace tarvo {

frmSplash::frmSplash(Globals& globals) : Form("frmSplash", ""), globals_(globals) {
  Place = {0, 0, 6480, 3000};

  Enter(framainframe, "framainframe");
  framainframe.Place = {120, 60, 6240, 2820};

  Enter(Image1, "Image1");
  Image1.Place = {300, 450, 1920, 1920};
  Image1.Picture = OwnIcon("tarvo");

  Enter(lblProductName, "lblProductName");
  lblProductName.Place = {2520, 780, 0, 660};
  lblProductName.Font = {"Arial", 26.25F, true};

  Enter(lblVersion, "lblVersion");
  lblVersion.Caption = Phrase("Version ?.??");
  lblVersion.Place = {2550, 1560, 3500, 300};
  lblVersion.Font = {"Arial", 12, false};
}

void frmSplash::Form_Load() {
  lblVersion.Caption = VersionText();
  lblProductName.Caption = globals_.translator.ApplicationTitle();
  globals_.translator.TranslateWindow(*this);
  FitProductName();
}

float frmSplash::Overflow() {
  lblProductName.Place.Width =
      globals_.frontEnd.TextWidth(lblProductName.Caption, lblProductName.Font);
  return lblProductName.Place.Left + lblProductName.Place.Width - framainframe.Place.Width;
}

void frmSplash::FitProductName() {
  constexpr int kRounds = 10;
  float overflow = 0;
  for (int round = 1; round <= kRounds; ++round) {
    overflow = Overflow();
    if (overflow < 0) break;
    lblProductName.Font.Size -= 1;
  }
  // Widened by what was measured before the last reduction, so a little more than the label needs.
  if (overflow > 0) {
    framainframe.Place.Width += overflow;
    Place.Width += overflow;
  }
  Overflow();
}

}  // namespace tarvo
