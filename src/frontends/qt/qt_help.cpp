#include "base/runtime_error.h"
#include "frontends/qt/qt_front_end.h"

namespace tarvo::qt {

void QtFrontEnd::ShowHelp(Form&, const HelpRequest&) { throw RuntimeError(kInvalidFileFormat); }

}  // namespace tarvo::qt
