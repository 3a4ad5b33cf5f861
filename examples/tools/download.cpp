#include "tools/download.h"

#include <algorithm>

#include "base/paths.h"
#include "platform/names.h"
#include "tools/device_settings.h"

namespace tarvo::tools {

namespace {

constexpr int kMinutesPerDay = 1440;

std::string DataFolder(Tool& tool) {
  Platform& platform = tool.System();
  const std::string folder = ResolveName(platform, JoinPath(tool.DriverFolder(), "Data"));
  if (!FolderExists(platform, folder)) platform.MakeFolder(folder);
  return folder;
}

}  // namespace

Download::Download(Tool& tool) : tool_(tool), end_(tool.System().Now()) {
  interval_ = IntervalOfDevice(tool);
  log_.driver = tool.DriverName();
  log_.site = tool.System().EncodeCodePage(LoadDeviceSettings(tool).site);
  log_.description = tool.Description();
}

int Download::BlockCount() const { return kMinutesPerDay / interval_; }

void Download::MoveBlock() {
  const int number = static_cast<int>(log_.readings.size()) + 1;
  const int minutesBeforeEnd = (BlockCount() - number) * interval_;
  const double moment = end_ - static_cast<double>(minutesBeforeEnd) / kMinutesPerDay;
  log_.readings.push_back(Measure(log_.description.fields, moment, number));
}

std::string Download::FreeName(const std::string& folder) const {
  const std::string base = JoinPath(folder, log_.driver + " " + DateText(end_));
  const auto isTaken = [&](const std::string& name) {
    return std::ranges::any_of(log_.description.files, [&](FileKind kind) {
      return FileExists(tool_.System(), name + "." + std::string(ExtensionOf(kind)));
    });
  };
  std::string name = base;
  for (int number = 2; isTaken(name); ++number) name = base + " " + std::to_string(number);
  return name;
}

std::string Download::Finish() {
  const std::string name = FreeName(DataFolder(tool_));
  for (const FileKind kind : log_.description.files) {
    tool_.System()
        .MakeFile(name + "." + std::string(ExtensionOf(kind)), FileUse::kData)
        ->WriteAt(0, DataText(kind, log_));
  }
  return std::to_string(log_.readings.size()) + " readings saved.";
}

}  // namespace tarvo::tools
