#pragma once

#include <string>
#include <string_view>

namespace tarvo {

// Every settings key of the program, with its type, its default and what it means.
struct SettingsKey {
  enum class Prefix {
    kNone,
    kAppTitle,          // the title as the first window translation found it
    kApplicationTitle,  // the present title, read afresh
  };

  Prefix prefix;
  std::string_view name;
  std::string_view defaultValue;
  std::string_view meaning;
};

namespace keys {

using Prefix = SettingsKey::Prefix;

inline constexpr SettingsKey kLumetProgramPath{
    Prefix::kNone, "Lumet_ProgramPath", "",
    "path; the sibling product's folder, by default the program's own"};
inline constexpr SettingsKey kTarvoProgramPath{
    Prefix::kNone, "Tarvo_ProgramPath", "",
    "path; the folder of the help file, by default the program's own"};
inline constexpr SettingsKey kVista{Prefix::kNone, "Vista", "",
                                    "exactly \"yes\": help opens in the viewer program"};

inline constexpr SettingsKey kAssociationAsked{
    Prefix::kNone, "Tarvo_Association_Asked", "No",
    "\"Yes\": the user declined the CSV viewer; anything but \"No\" ends the question"};

// Read with a small, written with a capital "S": one entry as long as both titles are the same
// text, because letter case is ignored.
inline constexpr SettingsKey kDirectoryRead{Prefix::kApplicationTitle, "_settings_Directory", "",
                                            "path; the data folder, if it has been chosen"};
inline constexpr SettingsKey kDirectoryWritten{Prefix::kAppTitle, "_Settings_Directory", "",
                                               "path; the data folder of the last run"};

inline constexpr SettingsKey kMainLeft{Prefix::kAppTitle, "_Settings_MainLeft", "1000", "twips"};
inline constexpr SettingsKey kMainTop{Prefix::kAppTitle, "_Settings_MainTop", "1000", "twips"};
inline constexpr SettingsKey kMainWidth{Prefix::kAppTitle, "_Settings_MainWidth", "6500", "twips"};
inline constexpr SettingsKey kMainHeight{Prefix::kAppTitle, "_Settings_MainHeight", "6500",
                                         "twips"};

inline constexpr SettingsKey kOldExe{Prefix::kAppTitle, "_Settings_oldtarvo.exe", "",
                                     "text; kept for sibling programs"};
inline constexpr SettingsKey kExe{Prefix::kAppTitle, "_Settings_tarvo.exe", "",
                                  "text; kept for sibling programs"};

// The view is written under one key and read under another, without the underscore, so that a saved
// view is not restored: the window starts in the view that was set for it on purpose, large icons
// as a rule.
inline constexpr SettingsKey kViewModeRead{Prefix::kAppTitle, "Settings_ViewMode", "0",
                                           "view mode at the start, 0 to 3"};
inline constexpr SettingsKey kViewModeWritten{Prefix::kAppTitle, "_Settings_ViewMode", "",
                                              "view mode at the last end, 0 to 3"};

// Followed by the driver's name and one of the tools' suffixes. The tools write these.
inline constexpr SettingsKey kToolVersion{Prefix::kNone, "tarvo.versions_", "-",
                                          "text; the version that a driver's tool recorded"};

}  // namespace keys
}  // namespace tarvo
