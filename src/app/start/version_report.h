#pragma once

#include <functional>
#include <string>

#include "forms/front_end.h"
#include "platform/platform.h"

namespace tarvo {

// The argument string of a run that only reports.
inline constexpr const char* kVersionReport = "/v";

// Lets every tool of every driver record its version: starts each "*.exe" of each driver's folder,
// hidden ones included, with "/v" and minimised, and waits for none. A tool that cannot be started
// is passed over.
//
// `folderPath` names the folder that holds the drivers; it gets a separator at its end and, unless
// its last name is "drivers" already, in any letter case, "drivers" with another one. So "" means
// the folder "drivers" in the root of the current drive. A missing folder holds no drivers. Only
// real folders count that have no attribute beside that one: not hidden, not read-only. Error 9 for
// more than 101, before anything is started.
//
// `onStarted`, when given, is told the identifier of every started process.
void ReportToolVersions(Platform& platform, FrontEnd& frontEnd, std::string& folderPath,
                        const std::function<void(int process)>& onStarted = {});

}  // namespace tarvo
