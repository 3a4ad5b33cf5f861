#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "tools/tool.h"
#include "tools/transfer.h"

// The windows of the tools. Each system has its own implementation, drawn with its own controls:
// the folders qt and win32. Every function shows a window until it is closed, and gives the
// program's exit code.
namespace tarvo::tools {

// Makes a transfer and drives it by a timer. The window closes by itself when all went well; after
// a failure it stays with the reason until it is closed. Closing it earlier cancels the transfer. 0
// when the transfer succeeded, otherwise 1.
int ShowTransfer(Tool& tool, std::string_view toolTitle, const ToolOptions& options,
                 const std::function<std::unique_ptr<Transfer>()>& makeTransfer);

// The driver's own settings. "OK" stores them, "Cancel" and the close box leave them as they were.
int ShowProperties(Tool& tool, const ToolOptions& options);

// The samples that the program would put on a hand-held device.
int ShowSamples(Tool& tool, const ToolOptions& options, const std::string& title);

}  // namespace tarvo::tools
