#include "app/start/tarvo.h"

#include <utility>

#include "app/start/csv_association.h"
#include "app/start/version_report.h"

namespace tarvo {

Tarvo::Tarvo(Platform& platform, FrontEnd& frontEnd, std::string arguments)
    : globals_(platform, frontEnd, std::move(arguments)),
      splash_(globals_),
      mainForm_(globals_, splash_) {}

AfterStart Tarvo::Start() {
  // The version report needs nothing of what follows: no settings, no dictionary, no window.
  if (globals_.ArgumentsAre(kVersionReport)) {
    std::string folderPath;
    ReportToolVersions(globals_.platform, globals_.frontEnd, folderPath);
    return AfterStart::kEnd;
  }
  globals_.OpenSettings();
  globals_.ReadProgramPaths();
  globals_.RegisterHelpFile();
  globals_.translator.LoadDictionary("TARVO.DIC");

  FrontEnd& frontEnd = globals_.frontEnd;
  frontEnd.Show(splash_);
  frontEnd.Repaint(splash_);
  frontEnd.Load(mainForm_);
  frontEnd.Unload(splash_);
  if (globals_.ArgumentsAre("/r")) {
    mainForm_.RefreshDrivers();
    return AfterStart::kEnd;
  }
  if (!frontEnd.IsLoaded(mainForm_)) return AfterStart::kEnd;  // closed while it was loading
  frontEnd.Show(mainForm_);
  CheckCsvAssociation(globals_);
  return AfterStart::kEventLoop;
}

}  // namespace tarvo
