#pragma once

#include <string>
#include <string_view>

#include "tools/tool.h"

// What the tools' windows say, whatever draws them. "&" stands before an access key.
namespace tarvo::tools::texts {

inline constexpr std::string_view kDownload = "Download";
inline constexpr std::string_view kUpload = "Upload";
inline constexpr std::string_view kProperties = "Properties";

inline constexpr std::string_view kOk = "OK";
inline constexpr std::string_view kCancel = "Cancel";
inline constexpr std::string_view kClose = "Close";

inline constexpr std::string_view kPort = "&Port:";
inline constexpr std::string_view kSite = "&Site:";
inline constexpr std::string_view kInterval = "&Minutes between readings:";

inline constexpr std::string_view kSamples = "Ready for the hand-held device:";

// "Meter - Download".
inline std::string WindowTitle(const Tool& tool, std::string_view toolTitle) {
  return tool.DriverName() + " - " + std::string(toolTitle);
}

}  // namespace tarvo::tools::texts
