#include "actions/help.h"
#include "app/globals/data_folder.h"
#include "app/start/csv_association.h"
#include "base/absorb.h"
#include "base/paths.h"
#include "ctl/commands.h"
#include "ctl/json.h"
#include "ctl/listed_drivers.h"
#include "ctl/table.h"
#include "forms/help_file.h"
#include "platform/names.h"
#include "settings/record_layout.h"

namespace tarvo {
namespace {

SystemFinding Good(std::string topic, std::string sentence) {
  return {std::move(topic), true, std::move(sentence)};
}

SystemFinding Odd(std::string topic, std::string sentence) {
  return {std::move(topic), false, std::move(sentence)};
}

// The description as the end of a sentence.
std::string Ending(const RuntimeError& error) {
  const std::string& text = error.Description();
  return text.ends_with('.') ? text : text + ".";
}

// Whether a file can be made in a folder: the only sure answer is to make one.
bool CanWriteInto(Platform& platform, const std::string& folder) {
  const std::string probe = JoinPath(folder, ".tarvo-can-write");
  return Absorb([&] {
    platform.MakeFile(probe, FileUse::kData);
    platform.RemoveFile(probe);
  });
}

SystemFinding FindFolder(Platform& platform, const std::string& topic, const std::string& path) {
  const std::string folder = ResolveName(platform, path);
  if (!FolderExists(platform, folder)) return Odd(topic, "There is no folder " + folder + ".");
  if (CanWriteInto(platform, folder)) return Good(topic, folder + " can be read and written.");
  return Odd(topic, "Nothing can be written into " + folder +
                        ": downloads and new drivers would be lost; check its permissions and the "
                        "free space.");
}

SystemFinding FindSettings(Globals& globals) {
  const std::string topic = "Settings file";
  try {
    globals.OpenSettings();
    const std::string& path = globals.LocalRegistry().RegistryDataFile();
    if (path.empty()) return Odd(topic, "It can neither be read nor made; no setting is kept.");
    const std::string bytes = ReadWholeFile(globals.platform, path);
    if (bytes.size() % kRecordSize != 0) {
      return Odd(topic, path + " ends inside a record; its last entry is damaged.");
    }
    const std::string owner = bytes.substr(kLengthSize, kFieldSize);
    if (!owner.empty() && owner[0] != '\0') {
      return Odd(topic, path + " is locked by \"" + owner.substr(0, owner.find('\0')) +
                            "\"; writing waits until that program ends or the lock is stale.");
    }
    return Good(topic, path + " can be read and is not locked.");
  } catch (const RuntimeError& error) {
    return Odd(topic, "It cannot be used: " + Ending(error));
  }
}

SystemFinding FindDictionary(Globals& globals) {
  const std::string topic = "Dictionary";
  try {
    globals.translator.LoadDictionary(kDictionary);
  } catch (const RuntimeError& error) {
    return Odd(topic,
               "TARVO.DIC in this folder cannot be read, and the program does not start here: " +
                   Ending(error));
  }
  if (!globals.translator.HasDictionary()) {
    return Good(topic, "There is no TARVO.DIC in this folder; started here, Tarvo speaks English.");
  }
  const std::string language = globals.translator.Language();
  return Good(topic, "TARVO.DIC in this folder is readable" +
                         (language.empty() ? "." : "; its language is \"" + language + "\"."));
}

SystemFinding FindHelp(Globals& globals) {
  globals.ReadProgramPaths();
  globals.RegisterHelpFile();
  const std::string topic = "Help file";
  if (globals.HelpFile.empty()) {
    return Odd(topic, "There is no " + globals.TarvoProgramPath + kHelpFileName +
                          "; install Tarvo again to get the help.");
  }
  try {
    if (!IsClassicHelp(globals.platform, globals.HelpFile)) {
      ReadHelpFile(globals.platform, globals.HelpFile);
    }
    return Good(topic, globals.HelpFile + " can be shown.");
  } catch (const RuntimeError& error) {
    return Odd(topic, "It cannot be shown; install Tarvo again to get the help: " + Ending(error));
  }
}

SystemFinding FindAssociation(Platform& platform) {
  const std::string topic = "CSV files";
  switch (ReadCsvAssociation(platform)) {
    case CsvAssociation::kViewer:
      return Good(topic, "They open in the CSV viewer.");
    case CsvAssociation::kOther:
      return Good(topic, "They open in another program than the CSV viewer, or in none.");
    case CsvAssociation::kMissingCommand:
      return Odd(topic, "They belong to the CSV viewer, which is not installed; install it again.");
    case CsvAssociation::kIncorrectCommand:
      break;
  }
  return Odd(topic,
             "They belong to the CSV viewer, whose entry starts something else; install it "
             "again.");
}

std::vector<SystemFinding> Examine(Globals& globals) {
  Platform& platform = globals.platform;
  std::vector<SystemFinding> findings;
  // The dictionary is the one in the folder that the command is run in.
  findings.push_back(FindDictionary(globals));
  findings.push_back(FindSettings(globals));
  const std::string dataPath = GetDataDirectory(globals);
  findings.push_back(FindFolder(platform, "Data folder", dataPath));
  findings.push_back(FindFolder(platform, "Drivers", JoinPath(dataPath, "Drivers")));
  findings.push_back(FindHelp(globals));
  findings.push_back(FindAssociation(platform));
  for (SystemFinding& finding : platform.Findings()) findings.push_back(std::move(finding));
  return findings;
}

}  // namespace

void ExamineSystem(CommandRun& run) {
  const std::vector<SystemFinding> findings = Examine(run.globals);
  if (!run.json) {
    for (const SystemFinding& finding : findings) {
      run.out << (finding.isGood ? "      " : "odd:  ") << OneLine(finding.topic) << ": "
              << OneLineSentence(finding.sentence) << '\n';
    }
    return;
  }
  std::vector<std::vector<std::string>> rows{{"topic", "state", "sentence"}};
  rows.reserve(findings.size() + 1);
  for (const SystemFinding& finding : findings) {
    rows.push_back({finding.topic, finding.isGood ? "good" : "odd", finding.sentence});
  }
  run.out << JsonTable(rows);
}

}  // namespace tarvo
