#include "app/globals/globals.h"

#include "app/globals/version.h"
#include "base/paths.h"
#include "base/text.h"
#include "platform/names.h"

namespace tarvo {

Globals::Globals(Platform& systemPlatform, FrontEnd& windowFrontEnd, std::string arguments)
    : platform(systemPlatform),
      frontEnd(windowFrontEnd),
      library(systemPlatform),
      translator(systemPlatform, windowFrontEnd, library),
      arguments_(std::move(arguments)) {}

RegistryReplacement& Globals::LocalRegistry() {
  if (!localRegistry_) localRegistry_ = std::make_unique<RegistryReplacement>(platform);
  return *localRegistry_;
}

std::string Globals::FullName(const SettingsKey& key) const {
  std::string name;
  if (key.prefix == SettingsKey::Prefix::kAppTitle) name = translator.AppTitle();
  if (key.prefix == SettingsKey::Prefix::kApplicationTitle) name = translator.ApplicationTitle();
  return name.append(key.name);
}

std::string Globals::Setting(const SettingsKey& key) {
  return LocalRegistry().GetSetting(FullName(key), key.defaultValue);
}

std::optional<std::string> Globals::KnownSetting(const SettingsKey& key) {
  return LocalRegistry().KnownSetting(FullName(key), key.defaultValue);
}

void Globals::SaveSetting(const SettingsKey& key, std::string_view value) {
  LocalRegistry().SaveSetting(FullName(key), value);
}

bool Globals::ArgumentsAre(std::string_view lowerCase) const {
  return LowerCase(arguments_) == lowerCase;
}

void Globals::OpenSettings() {
  LocalRegistry().SetCompanyName(kCompanyName);
  LocalRegistry().OpenLocalRegistry("");
}

void Globals::ReadProgramPaths() {
  const auto read = [this](const SettingsKey& key) {
    return WithSeparator(LocalRegistry().GetSetting(key.name, platform.ProgramFolder()));
  };
  LumetProgramPath = read(keys::kLumetProgramPath);
  TarvoProgramPath = read(keys::kTarvoProgramPath);
}

void Globals::RegisterHelpFile() {
  const std::string file = ResolveName(platform, TarvoProgramPath + kHelpFileName);
  HelpFile = FileExists(platform, file) ? file : std::string();
}

std::string VersionText(int major, int minor, int revision) {
  return "Version " + std::to_string(major) + "." + std::to_string(minor) + "." +
         std::to_string(revision);
}

std::string VersionText() { return VersionText(kMajorVersion, kMinorVersion, kRevision); }

}  // namespace tarvo
