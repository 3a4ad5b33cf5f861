#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/platform.h"
#include "settings/key_matcher.h"
#include "settings/record_layout.h"
#include "settings/record_lock.h"
#include "settings/records.h"

namespace tarvo {

// What an entry holds, as text of the program (UTF-8), without padding.
struct SettingsEntry {
  std::string key;
  std::string value;

  bool operator==(const SettingsEntry&) const = default;
};

// What the file holds under a key.
struct StoredValue {
  bool isKnown = false;             // false when the file could not be read
  std::optional<std::string> text;  // nothing when the key is missing
};

// Where an entry is to be written, with what is there at this moment.
struct Place {
  EntryNumber number;
  std::string text;   // of the record
  bool isBehindLast;  // it is no entry of the file yet
};

// The settings file as a list of entries. Here, and only here, text is put into the code page and
// taken out of it.
//
// Every operation opens the file, works on it and closes it again. Nothing throws: what fails is
// tried once more, then a file that cannot be opened or read counts as empty, and what cannot be
// written is not written.
class DataFile {
 public:
  explicit DataFile(Platform& platform);

  // The file's path, its last name in any letter case; "" for none.
  void SetPath(std::string path) { path_ = std::move(path); }
  const std::string& Path() const { return path_; }

  // Opens the file, made with an empty lock record when it is missing or empty, and clears a stale
  // lock. False when it cannot be opened for reading and writing; it is closed then.
  bool OpenDataFile();
  void CloseDataFile() { file_.reset(); }

  // The first entry whose whole key field is the key, in any letter case; 0 when there is none,
  // nothing when that cannot be known.
  std::optional<EntryNumber> FindEntry(std::string_view key);

  // The value under a key with all its continuations.
  StoredValue ReadValue(std::string_view key);

  // The texts of the values under each of the keys, from one reading of the file.
  std::vector<std::optional<std::string>> ReadValues(const std::vector<std::string>& keys);

  // Writes an entry in the place of another, or for 0 in the first empty record, else at the end;
  // holds the lock meanwhile. Where another program has put an entry of its own into that record
  // since, the key is looked for again, and a record chosen for it. True when the entry then reads
  // back as it was given, which it does not with a NUL or a character that the code page lacks, and
  // when a record chosen for it has not become another program's by the end: such an entry is
  // written, yet false is returned. An entry with a field of more than 1024 characters is refused,
  // and the file stays open.
  bool WriteEntry(EntryNumber number, const SettingsEntry& entry);

  // Deletes the entries of a key and its continuations; letter case counts. Takes no lock.
  void DeleteKey(std::string_view key);

  // Deletes the first entry with this key field; letter case counts. Takes no lock.
  void DeleteEntryExact(std::string_view name);

  // The distinct keys without regard to letter case, as they are first met, without continuation
  // numbers.
  std::vector<std::string> EnumEntries();

 private:
  // The records found so far that hold a key's value, by the number of the chunk.
  using Chunks = std::map<std::uint64_t, std::pair<EntryNumber, std::string>>;

  template <class Work>
  bool WithOpenFile(Work work);
  std::optional<std::string> Joined(const Chunks& chunks);
  EntryNumber Find(const KeyMatcher& key);
  std::string SettledText(EntryNumber number, std::string text);
  EntryNumber FirstFreeEntry();
  Place TakePlace(EntryNumber number, const KeyMatcher& key);
  Place LookAt(EntryNumber number);
  void Put(Place& place, std::string_view text);
  template <class Condition>
  bool ClearEntryIf(const EntryScan& scan, Condition isMeant);
  std::string RecordText(const SettingsEntry& entry) const;
  SettingsEntry EntryIn(std::string_view recordText) const;
  std::string StoredKey(std::string_view recordText) const;

  Platform& platform_;
  LowerCaseTable lowerCase_;
  RecordLock lock_;
  std::string path_;
  std::unique_ptr<File> file_;  // null when closed
};

}  // namespace tarvo
