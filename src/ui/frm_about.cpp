#include "ui/frm_about.h"

namespace tarvo {

frmAbout::frmAbout(Globals& globals) : Form("frmAbout", ""), globals_(globals) {
  Enter(picIcon, "picIcon");
  Enter(lblTitle, "lblTitle");
  Enter(lblVersion, "lblVersion");
  Enter(lblDisclaimer, "lblDisclaimer");
  Enter(lblCopyright, "lblCopyright");
  Enter(Line1[0], "Line1_0");
  Enter(Line1[1], "Line1_1");
  Enter(cmdOK, "cmdOK");
  cmdOK.IsDefault = cmdOK.IsCancel = true;
  cmdOK.Click = [this] { cmdOK_Click(); };
  Design();
}

// Each load starts from the design texts, so that they are translated once.
void frmAbout::Design() {
  Caption = Phrase("About Tarvo");
  Place = {0, 0, 6300, 3630};

  picIcon.Place = {300, 300, 960, 960};
  picIcon.Picture = OwnIcon("tarvo");

  lblTitle.Caption = Phrase("Tarvo");
  lblTitle.Place = {1500, 300, 4500, 420};
  lblTitle.Font = {"Arial", 15, true};

  lblVersion.Caption = Phrase("Version");
  lblVersion.Place = {1500, 810, 4500, 270};

  lblCopyright.Caption = Phrase("Copyright © 2026 Halvex Limited. All rights reserved.");
  lblCopyright.Place = {300, 1560, 5700, 540};

  Line1[0].Place = {300, 2220, 5700, 0};
  Line1[1].Place = {300, 2235, 5700, 0};

  lblDisclaimer.Caption = Phrase("Warning: ...");
  lblDisclaimer.Place = {300, 2400, 4000, 540};

  cmdOK.Caption = Phrase("OK");
  cmdOK.Place = {4600, 2940, 1400, 390};
}

void frmAbout::Form_Load() {
  Design();
  lblVersion.Caption = VersionText();
  lblTitle.Caption = globals_.translator.ApplicationTitle();
  globals_.translator.TranslateWindow(*this);
}

void frmAbout::cmdOK_Click() { globals_.frontEnd.Unload(*this); }

}  // namespace tarvo
