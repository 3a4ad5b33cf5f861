#include "app/start/version_report.h"

#include <vector>

#include "base/absorb.h"
#include "base/paths.h"
#include "base/text.h"
#include "platform/names.h"

namespace tarvo {
namespace {

constexpr std::size_t kMostDrivers = 101;

void CompletePath(std::string& folderPath) {
  folderPath = WithSeparator(folderPath);
  const std::string drivers = std::string("drivers") + kSeparator;
  const std::size_t start = folderPath.size() - std::min(folderPath.size(), drivers.size());
  if (LowerCase(std::string_view(folderPath).substr(start)) != drivers) folderPath += drivers;
}

// What cannot be listed holds nothing.
std::vector<FolderEntry> ListOrNone(Platform& platform, const std::string& folder,
                                    std::string_view pattern, unsigned attributes) {
  std::vector<FolderEntry> entries;
  Absorb([&] { entries = ListFolder(platform, folder, pattern, attributes); });
  return entries;
}

std::vector<std::string> DriverFolders(Platform& platform, const std::string& folderPath) {
  std::vector<std::string> folders;
  for (const FolderEntry& entry : ListOrNone(platform, folderPath, "*.*", kDirectory)) {
    std::string folder = folderPath + entry.name;
    if (entry.isLink || platform.Attributes(folder) != unsigned{kDirectory}) continue;
    if (folders.size() == kMostDrivers) throw RuntimeError(kSubscriptOutOfRange);
    folders.push_back(std::move(folder));
  }
  return folders;
}

}  // namespace

void ReportToolVersions(Platform& platform, FrontEnd& frontEnd, std::string& folderPath,
                        const std::function<void(int process)>& onStarted) {
  CompletePath(folderPath);
  const std::vector<std::string> folders =
      DriverFolders(platform, WithSeparator(ResolveName(platform, folderPath)));
  frontEnd.SetMousePointer(kHourglassPointer);
  for (const std::string& folder : folders) {
    for (const FolderEntry& tool : ListOrNone(platform, folder, "*.exe", kHidden)) {
      Absorb([&] {
        const int process =
            platform.StartProcess(JoinPath(folder, tool.name), {"/v"}, StartWindow::kMinimised);
        if (onStarted) onStarted(process);
      });
    }
  }
  frontEnd.SetMousePointer(kDefaultPointer);
}

}  // namespace tarvo
