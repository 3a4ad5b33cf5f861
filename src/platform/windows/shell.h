#pragma once

#include <string_view>

#include "platform/help_command.h"

namespace tarvo {

// What the system's shell opens and shows; see the functions of Platform with similar names.
void OpenInExplorer(std::string_view folder);
void ShowInExplorer(std::string_view file);
void OpenWithShell(std::string_view path, std::string_view workingFolder);
void OpenWithHelpViewer(std::string_view file, HelpCommand command, std::string_view key);

}  // namespace tarvo
