#include "actions/help.h"

#include "base/runtime_error.h"
#include "platform/names.h"

namespace tarvo {
namespace {

// The first bytes of a help file in the classic binary format.
constexpr std::string_view kClassicHelpMark{"\x3F\x5F\x03\x00", 4};

void Tell(Globals& globals, std::string_view text, MessageIcon icon) {
  globals.frontEnd.MsgBox(text, MessageButtons::kOk, icon, globals.translator.ApplicationTitle());
}

}  // namespace

bool ShowHelpWithViewer(Globals& globals, std::string_view helpFile) {
  if (globals.Setting(keys::kVista) != "yes") return false;
  Platform& platform = globals.platform;
  try {
    const std::string viewer = ResolveName(platform, globals.LumetProgramPath + "winhlp32.exe");
    platform.StartProcess(viewer, {std::string(helpFile)}, StartWindow::kNormal);
  } catch (const RuntimeError&) {
    Tell(globals, globals.Translate("Help file could not be loaded."), MessageIcon::kExclamation);
  }
  return true;
}

bool IsClassicHelp(Platform& platform, const std::string& file) {
  return platform.OpenFile(file, OpenFor::kReading)->ReadAt(0, kClassicHelpMark.size()) ==
         kClassicHelpMark;
}

void ShowRegisteredHelp(Globals& globals, MainWindow& window, HelpCommand command) {
  if (globals.HelpFile.empty()) {
    Tell(globals,
         globals.Translate("Unable to display Help Contents. There is no Help associated with this "
                           "application."),
         MessageIcon::kInformation);
    return;
  }
  try {
    if (IsClassicHelp(globals.platform, globals.HelpFile)) {
      globals.platform.OpenClassicHelp(globals.HelpFile, command, {});
      return;
    }
    const std::string language = globals.translator.Language();
    globals.frontEnd.ShowHelp(window, {globals.HelpFile, command, {}, language});
  } catch (const RuntimeError& error) {
    Tell(globals, error.Description(), MessageIcon::kNone);
  }
}

}  // namespace tarvo
