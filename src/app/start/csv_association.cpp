#include "app/start/csv_association.h"

#include "app/start/registry_values.h"
#include "base/text.h"

namespace tarvo {
namespace {

constexpr const char* kExtension = ".csv";
constexpr const char* kViewerClass = "csvFile";
constexpr const char* kViewerMark = "csvview";

void Tell(Globals& globals, std::string_view text) {
  globals.frontEnd.MsgBox(text, MessageButtons::kOk, MessageIcon::kNone,
                          globals.translator.ApplicationTitle());
}

void OfferViewer(Globals& globals) {
  const Answer answer = globals.frontEnd.MsgBox(
      globals.Translate("Set CSV Viewer as default association?"), MessageButtons::kYesNo,
      MessageIcon::kNone, globals.Translate("CSV Viewer not associated"));
  if (answer == Answer::kYes) {
    std::string viewerClass = kViewerClass;
    WriteRegistryString(globals.platform, RegistryRoot::kClasses, kExtension, {}, viewerClass);
  } else {
    globals.SaveSetting(keys::kAssociationAsked, "Yes");
  }
}

}  // namespace

CsvAssociation ReadCsvAssociation(Platform& platform) {
  const RegistryRoot root = RegistryRoot::kClasses;
  std::string className;
  if (!ReadRegistryValue(platform, root, kExtension, {}, className)) return CsvAssociation::kOther;
  const bool isViewerClass = className == kViewerClass;
  std::string command;
  if (!ReadRegistryValue(platform, root, className + "\\shell\\open\\command", {}, command)) {
    return isViewerClass ? CsvAssociation::kMissingCommand : CsvAssociation::kOther;
  }
  if (LowerCase(command).find(kViewerMark) != std::string::npos) return CsvAssociation::kViewer;
  return isViewerClass ? CsvAssociation::kIncorrectCommand : CsvAssociation::kOther;
}

void CheckCsvAssociation(Globals& globals) {
  if (globals.Setting(keys::kAssociationAsked) != "No") return;
  switch (ReadCsvAssociation(globals.platform)) {
    case CsvAssociation::kViewer:
      return;
    case CsvAssociation::kOther:
      return OfferViewer(globals);
    case CsvAssociation::kMissingCommand:
      return Tell(globals,
                  globals.Translate("Association key is missing, please re-install to correct."));
    case CsvAssociation::kIncorrectCommand:
      return Tell(globals,
                  globals.Translate("Association key is incorrect, please re-install to correct."));
  }
}

}  // namespace tarvo
