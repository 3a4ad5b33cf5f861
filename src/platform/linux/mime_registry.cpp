#include "platform/linux/mime_registry.h"

#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "base/text.h"
#include "platform/linux/desktop_entry.h"
#include "platform/linux/mime_apps.h"
#include "platform/linux/mime_apps_edit.h"
#include "platform/linux/small_file.h"

namespace tarvo {
namespace {

constexpr std::string_view kExtension = ".csv";
constexpr std::string_view kMimeType = "text/csv";
constexpr std::string_view kCommand = "shell\\open\\command";
constexpr std::string_view kDesktopFile = ".desktop";
constexpr std::string_view kOwnApplication = "csvFile.desktop";

std::optional<RegistryValue> StringValue(std::string text, std::size_t capacity) {
  if (text.size() > capacity) return std::nullopt;
  return RegistryValue{RegistryType::kString, std::move(text)};
}

RegistryStatus StatusOf(Replacing result) {
  switch (result) {
    case Replacing::kDone:
      return RegistryStatus::kDone;
    case Replacing::kDenied:
      return RegistryStatus::kAccessDenied;
    case Replacing::kFailed:
      break;
  }
  return RegistryStatus::kFailed;
}

// The class of ".csv"; "" for none.
std::string DefaultClass() {
  std::string id = DefaultApplication(kMimeType, kOwnApplication);
  if (id.ends_with(kDesktopFile)) id.resize(id.size() - kDesktopFile.size());
  return id;
}

std::string WithDefault(const std::string& text, const std::string& id, DefaultLine use) {
  return WithDefaultApplication(text, kMimeType, id, use);
}

// The user's files for the desktop that runs in which another default would come before the one in
// the general file. One that cannot be read counts for nobody.
std::vector<std::string> DesktopFilesToChange(const std::string& id) {
  std::vector<std::string> files = DesktopMimeAppsFiles();
  std::erase_if(files, [&](const std::string& file) {
    const std::optional<std::string> text = ReadSmallFile(file).content;
    return !text || WithDefault(*text, id, DefaultLine::kWhenThereIs) == *text;
  });
  return files;
}

// The general file comes last: until it is changed, the value is the old one or already the new.
Replacing MakeDefault(const std::string& id) {
  for (const std::string& file : DesktopFilesToChange(id)) {
    const Replacing result = ReplaceSmallFile(file, [&](const std::string& text) {
      return WithDefault(text, id, DefaultLine::kWhenThereIs);
    });
    if (result != Replacing::kDone) return result;
  }
  return ReplaceSmallFile(UserMimeAppsFile(), [&](const std::string& text) {
    return WithDefault(text, id, DefaultLine::kAlways);
  });
}

class ExtensionKey final : public RegistryKey {
 public:
  explicit ExtensionKey(RegistryAccess access) : access_(access) {}

  std::optional<RegistryValue> Query(std::string_view valueName, std::size_t capacity) override {
    try {
      std::string name = valueName.empty() ? DefaultClass() : "";
      if (!name.empty()) return StringValue(std::move(name), capacity);
    } catch (const std::exception&) {
      // Nothing throws here.
    }
    return std::nullopt;
  }

  RegistryStatus SetString(std::string_view valueName, std::string_view value) override {
    if (access_ != RegistryAccess::kAll || !valueName.empty()) return RegistryStatus::kAccessDenied;
    if (value.ends_with('\0')) value.remove_suffix(1);
    try {
      const std::string id = std::string(value) + std::string(kDesktopFile);
      return IsDesktopFileId(id) ? StatusOf(MakeDefault(id)) : RegistryStatus::kFailed;
    } catch (const std::exception&) {
      return RegistryStatus::kFailed;
    }
  }

 private:
  RegistryAccess access_;
};

class CommandKey final : public RegistryKey {
 public:
  explicit CommandKey(std::string command) : command_(std::move(command)) {}

  std::optional<RegistryValue> Query(std::string_view valueName, std::size_t capacity) override {
    if (!valueName.empty()) return std::nullopt;
    return StringValue(command_, capacity);
  }

  RegistryStatus SetString(std::string_view, std::string_view) override {
    return RegistryStatus::kAccessDenied;
  }

 private:
  std::string command_;
};

RegistryStatus MayWriteDefault() {
  const std::string general = UserMimeAppsFile();
  if (general.empty()) return RegistryStatus::kFailed;
  std::vector<std::string> files = DesktopFilesToChange(std::string(kOwnApplication));
  files.push_back(general);
  for (const std::string& file : files) {
    const Replacing result = MayReplaceSmallFile(file);
    if (result != Replacing::kDone) return StatusOf(result);
  }
  return RegistryStatus::kDone;
}

OpenedKey OpenExtension(RegistryAccess access) {
  if (DefaultClass().empty()) return {RegistryStatus::kNotFound, nullptr};
  if (access == RegistryAccess::kAll && MayWriteDefault() != RegistryStatus::kDone) {
    return {RegistryStatus::kAccessDenied, nullptr};
  }
  return {RegistryStatus::kDone, std::make_unique<ExtensionKey>(access)};
}

// The class whose command a path names; "" for any other path.
std::string_view ClassOfCommand(std::string_view path) {
  const std::size_t cut = path.find('\\');
  if (cut == path.npos || !EqualIgnoringCase(path.substr(cut + 1), kCommand)) return {};
  return path.substr(0, cut);
}

OpenedKey OpenCommand(std::string_view name, RegistryAccess access) {
  std::optional<DesktopEntry> entry =
      FindDesktopEntry(std::string(name) + std::string(kDesktopFile));
  if (!entry) return {RegistryStatus::kNotFound, nullptr};
  if (access == RegistryAccess::kAll) return {RegistryStatus::kAccessDenied, nullptr};
  return {RegistryStatus::kDone, std::make_unique<CommandKey>(std::move(entry->exec))};
}

}  // namespace

OpenedKey OpenMimeKey(RegistryRoot root, std::string_view path, RegistryAccess access) {
  try {
    if (root == RegistryRoot::kClasses && EqualIgnoringCase(path, kExtension)) {
      return OpenExtension(access);
    }
    const std::string_view name = root == RegistryRoot::kClasses ? ClassOfCommand(path) : "";
    if (!name.empty()) return OpenCommand(name, access);
  } catch (const std::exception&) {
    return {RegistryStatus::kFailed, nullptr};
  }
  return {RegistryStatus::kNotFound, nullptr};
}

OpenedKey MakeMimeKey(RegistryRoot root, std::string_view path) {
  try {
    if (root != RegistryRoot::kClasses || !EqualIgnoringCase(path, kExtension)) {
      return {RegistryStatus::kAccessDenied, nullptr};
    }
    const RegistryStatus status = MayWriteDefault();
    if (status != RegistryStatus::kDone) return {status, nullptr};
    return {RegistryStatus::kDone, std::make_unique<ExtensionKey>(RegistryAccess::kAll)};
  } catch (const std::exception&) {
    return {RegistryStatus::kFailed, nullptr};
  }
}

}  // namespace tarvo
