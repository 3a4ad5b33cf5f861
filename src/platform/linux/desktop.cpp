#include "platform/linux/desktop.h"

#include "base/runtime_error.h"

namespace tarvo {

void OpenFolderOnDesktop(std::string_view) { throw RuntimeError(kFileNotFound); }
void ShowFileOnDesktop(std::string_view) { throw RuntimeError(kFileNotFound); }
void OpenByVerbOnDesktop(std::string_view, std::string_view) { throw RuntimeError(kFileNotFound); }
void OpenClassicHelpOnDesktop(std::string_view) { throw RuntimeError(kFileNotFound); }

}  // namespace tarvo
