#pragma once

#include <string>

#include "app/globals/globals.h"
#include "ui/frm_drivers.h"
#include "ui/frm_splash.h"

namespace tarvo {

// What is to happen after the start procedure.
enum class AfterStart {
  kEventLoop,  // the main window is there: run the event loop until no window is loaded
  kEnd,        // end the process at once, without unloading any window
};

// One run of the program: its globals, its windows and the procedure that starts it.
class Tarvo {
 public:
  // `arguments`: the program's arguments joined by one blank each.
  Tarvo(Platform& platform, FrontEnd& frontEnd, std::string arguments);

  // Opens the settings, fixes the program paths, loads the dictionary, shows the splash window
  // while the main window loads and then shows that. Errors come through: they end the program with
  // the standard message.
  AfterStart Start();

  Globals& RunGlobals() { return globals_; }
  frmDrivers& MainForm() { return mainForm_; }

 private:
  Globals globals_;
  frmSplash splash_;
  frmDrivers mainForm_;
};

}  // namespace tarvo
