#include <algorithm>
#include <optional>

#include "ctl/commands.h"
#include "ctl/table.h"

namespace tarvo {
namespace {

// The settings store with a usable file; the store itself would be silent about an unusable one.
RegistryReplacement& OpenStore(CommandRun& run) {
  run.globals.OpenSettings();
  RegistryReplacement& store = run.globals.LocalRegistry();
  if (store.RegistryDataFile().empty()) {
    throw CommandFailure("The settings file cannot be opened for reading and writing.");
  }
  return store;
}

// The stored value; nothing when there is none. A default that comes back twice, though two
// different ones were asked with, is a stored value.
std::optional<std::string> Stored(RegistryReplacement& store, const std::string& key) {
  const std::string value = store.GetSetting(key, "");
  if (value.empty() && store.GetSetting(key, "absent") == "absent") return std::nullopt;
  return value;
}

CommandFailure NoSuchSetting(const std::string& key) {
  return CommandFailure("There is no setting \"" + OneLine(key) + "\".");
}

}  // namespace

void ListSettings(CommandRun& run) {
  RegistryReplacement& store = OpenStore(run);
  for (const std::string& key : store.EnumEntries()) {
    run.out << OneLine(key) << '\t' << OneLine(Stored(store, key).value_or("")) << '\n';
  }
}

void GetSettingValue(CommandRun& run) {
  RegistryReplacement& store = OpenStore(run);
  const auto value = Stored(store, run.arguments[0]);
  if (!value) throw NoSuchSetting(run.arguments[0]);
  run.out << *value << '\n';
}

void SetSetting(CommandRun& run) {
  RegistryReplacement& store = OpenStore(run);
  const std::string& key = run.arguments[0];
  const std::string& value = run.arguments[1];
  store.SaveSetting(key, value);
  if (Stored(store, key) != value) {
    throw CommandFailure("The setting \"" + OneLine(key) + "\" could not be stored as it stands.");
  }
}

void DeleteSetting(CommandRun& run) {
  RegistryReplacement& store = OpenStore(run);
  const std::string& key = run.arguments[0];
  const auto isThere = [&] {
    const auto keys = store.EnumEntries();
    return std::find(keys.begin(), keys.end(), key) != keys.end();
  };
  if (!isThere()) throw NoSuchSetting(key);
  store.DeleteKey(key);
  if (isThere()) throw CommandFailure("The setting \"" + OneLine(key) + "\" could not be deleted.");
}

}  // namespace tarvo
