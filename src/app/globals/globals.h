#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "app/globals/settings_keys.h"
#include "common/library.h"
#include "forms/front_end.h"
#include "platform/platform.h"
#include "settings/registry_replacement.h"
#include "translate/translator.h"

namespace tarvo {

inline constexpr const char* kHelpFileName = "TARVO.HLP";
inline constexpr const char* kCompanyName = "Halvex Limited";

// What the whole run shares. Everything above this floor is given the one object of its run.
class Globals {
 public:
  // `arguments` is the argument string: the program's arguments joined by one blank each.
  Globals(Platform& systemPlatform, FrontEnd& windowFrontEnd, std::string arguments);

  // The settings store, made at the first call.
  RegistryReplacement& LocalRegistry();

  // The phrase in the user's language with its parameters filled in; see Translator::Translate.
  std::string Translate(std::string_view phrase, std::string_view parameters = {}) {
    return translator.Translate(phrase, parameters);
  }

  // The stored value of a key of the table, or the table's default.
  std::string Setting(const SettingsKey& key);

  // The same, but nothing when the settings could not be read.
  std::optional<std::string> KnownSetting(const SettingsKey& key);

  void SaveSetting(const SettingsKey& key, std::string_view value);

  // Whether the whole argument string, letter case ignored, is this one.
  bool ArgumentsAre(std::string_view lowerCase) const;

  // Makes the store, sets the company's name and opens the settings file.
  void OpenSettings();

  // Fixes the two program paths: the stored value or the program's own folder, with a separator at
  // the end.
  void ReadProgramPaths();

  // Registers the program's help file if there is one in TarvoProgramPath.
  void RegisterHelpFile();

  Platform& platform;
  FrontEnd& frontEnd;
  Library library;
  Translator translator;
  std::string LumetProgramPath;
  std::string TarvoProgramPath;
  std::string HelpFile;  // path of the registered help file; "" for none

 private:
  std::string FullName(const SettingsKey& key) const;

  std::string arguments_;
  std::unique_ptr<RegistryReplacement> localRegistry_;
};

// The version as it is shown: "Version 2.1.35", each number without padding.
std::string VersionText(int major, int minor, int revision);
std::string VersionText();

}  // namespace tarvo
