#include "platform/linux/mime_apps.h"

#include <algorithm>
#include <optional>

#include "base/paths.h"
#include "platform/linux/desktop_entry.h"
#include "platform/linux/key_file.h"
#include "platform/linux/small_file.h"
#include "platform/linux/xdg_folders.h"

namespace tarvo {
namespace {

constexpr std::string_view kFileName = "mimeapps.list";

using Identifiers = std::vector<std::string>;

bool Contains(const Identifiers& identifiers, std::string_view id) {
  return std::find(identifiers.begin(), identifiers.end(), id) != identifiers.end();
}

// What the files of one folder say of a type.
struct Associations {
  Identifiers defaults;  // of the desktop's files, then of the general one
  Identifiers added;
  Identifiers removed;
};

class FileOfGroups {
 public:
  explicit FileOfGroups(const std::string& path)
      : text_(ReadSmallFile(path).content.value_or("")), lines_(KeyFileLines(text_)) {}
  FileOfGroups(const FileOfGroups&) = delete;
  FileOfGroups& operator=(const FileOfGroups&) = delete;

  Identifiers List(std::string_view group, std::string_view key) const {
    return KeyFileList(KeyFileValue(lines_, group, key).value_or(""));
  }

 private:
  std::string text_;
  std::vector<KeyFileLine> lines_;
};

std::vector<std::string> DesktopFilesIn(const std::string& folder) {
  std::vector<std::string> files = CurrentDesktops();
  for (std::string& name : files) name = JoinPath(folder, name.append("-").append(kFileName));
  return files;
}

Associations AssociationsIn(const std::string& folder, std::string_view mimeType) {
  Associations found;
  for (const std::string& file : DesktopFilesIn(folder)) {
    const Identifiers named = FileOfGroups(file).List("Default Applications", mimeType);
    found.defaults.insert(found.defaults.end(), named.begin(), named.end());
  }
  const FileOfGroups general(JoinPath(folder, kFileName));
  const Identifiers named = general.List("Default Applications", mimeType);
  found.defaults.insert(found.defaults.end(), named.begin(), named.end());
  found.added = general.List("Added Associations", mimeType);
  found.removed = general.List("Removed Associations", mimeType);
  std::erase_if(found.removed, [&](const std::string& id) { return Contains(found.added, id); });
  return found;
}

// Those of a folder's own desktop files that list the type.
Identifiers CachedIn(const std::string& folder, std::string_view mimeType) {
  return FileOfGroups(JoinPath(folder, "mimeinfo.cache")).List("MIME Cache", mimeType);
}

// One folder that may hold such files, and the folder of data it belongs to ("" for a folder of
// configuration).
struct Place {
  std::string folder;
  std::string dataFolder;
};

std::vector<Place> Places() {
  std::vector<Place> places;
  for (const std::string& folder : SystemConfigFolders()) places.push_back({folder, ""});
  if (const std::string own = ConfigHome(); !own.empty()) places.insert(places.begin(), {own, ""});
  for (const std::string& folder : DataFolders()) {
    places.push_back({JoinPath(folder, "applications"), folder});
  }
  return places;
}

// The search through all places, the most important first; what is taken away grows on the way.
class Search {
 public:
  Search(std::string_view mimeType, std::string_view kept) : mimeType_(mimeType), kept_(kept) {
    for (Place& place : Places()) {
      Associations associations = AssociationsIn(place.folder, mimeType);
      levels_.push_back({std::move(place), std::move(associations)});
    }
  }

  std::string Default() const {
    Identifiers removed;
    for (const Level& level : levels_) {
      Add(level.associations.removed, removed);
      for (const std::string& id : level.associations.defaults) {
        const bool counts = IsKept(id, level) || FindDesktopEntry(id).has_value();
        if (counts && !Contains(removed, id)) return id;
      }
    }
    return {};
  }

  std::string MostPreferred() const {
    Identifiers removed;
    for (const Level& level : levels_) {
      for (const std::string& id : level.associations.added) {
        if (!Contains(removed, id) && FindDesktopEntry(id)) return id;
      }
      Add(level.associations.removed, removed);
      for (const std::string& id : CachedIn(level.place.folder, mimeType_)) {
        if (!Contains(removed, id) && IsInstalledIn(level.place, id)) return id;
      }
    }
    return {};
  }

 private:
  struct Level {
    Place place;
    Associations associations;
  };

  static void Add(const Identifiers& more, Identifiers& removed) {
    removed.insert(removed.end(), more.begin(), more.end());
  }

  bool IsKept(std::string_view id, const Level& level) const {
    return !kept_.empty() && id == kept_ && level.place.folder == ConfigHome();
  }

  // A folder's cache tells of its own desktop files. One that a folder before it has too hides it.
  static bool IsInstalledIn(const Place& place, const std::string& id) {
    const std::optional<DesktopEntry> entry = FindDesktopEntry(id);
    return entry && entry->dataFolder == place.dataFolder;
  }

  std::string mimeType_;
  std::string kept_;
  std::vector<Level> levels_;
};

}  // namespace

std::string UserMimeAppsFile() {
  const std::string folder = ConfigHome();
  return folder.empty() ? "" : JoinPath(folder, kFileName);
}

std::vector<std::string> DesktopMimeAppsFiles() {
  const std::string folder = ConfigHome();
  return folder.empty() ? std::vector<std::string>() : DesktopFilesIn(folder);
}

std::string DefaultApplication(std::string_view mimeType, std::string_view kept) {
  const Search search(mimeType, kept);
  const std::string id = search.Default();
  return id.empty() ? search.MostPreferred() : id;
}

}  // namespace tarvo
