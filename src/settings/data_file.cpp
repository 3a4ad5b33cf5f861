#include "settings/data_file.h"

#include <set>

#include "base/runtime_error.h"
#include "base/text.h"
#include "platform/names.h"
#include "settings/records.h"

namespace tarvo {
namespace {

// How often a record, or the lock, is looked at in vain before it is taken as it is.
constexpr int kMostLooks = 100;

// Takes a step whose failure the store bears silently; whether it has succeeded.
template <class Step>
bool Succeeds(Step step) {
  try {
    step();
    return true;
  } catch (const RuntimeError&) {
    return false;
  }
}

std::string_view WithoutContinuation(std::string_view storedKey) {
  return storedKey.substr(0, storedKey.find(kContinuationSign));
}

// Whether a record may take the key: it is behind the last entry, empty, or holds that key.
bool IsOpenTo(const KeyMatcher& key, const Place& place) {
  return place.isBehindLast || CutAtNul(place.text).empty() || key.Matches(FirstField(place.text));
}

}  // namespace

DataFile::DataFile(Platform& platform)
    : platform_(platform), lowerCase_(MakeLowerCaseTable(platform)), lock_(platform) {}

bool DataFile::OpenDataFile() {
  const bool opened = Succeeds([&] {
    file_ = platform_.OpenFile(ResolveName(platform_, path_), OpenFor::kReadingAndWriting);
    if (file_->Size() == 0) ClearRecord(*file_, kLockRecord);
  });
  if (!opened) {
    CloseDataFile();
    return false;
  }
  // A lock that cannot be cleared hinders writing only.
  Succeeds([&] { lock_.ClearStaleLock(*file_); });
  return true;
}

// Opens the file, does the work on it and closes it. Work that fails is begun once more: what is
// taken for missing because the file could not be read is lost when its default is saved next.
// Whether the work has come to its end.
template <class Work>
bool DataFile::WithOpenFile(Work work) {
  constexpr int kAttempts = 2;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    if (!OpenDataFile()) continue;
    const bool isDone = Succeeds(work);
    CloseDataFile();
    if (isDone) return true;
  }
  return false;
}

std::optional<EntryNumber> DataFile::FindEntry(std::string_view key) {
  const KeyMatcher matcher(lowerCase_, key);
  EntryNumber found = 0;
  const bool isKnown = WithOpenFile([&] { found = Find(matcher); });
  return isKnown ? std::optional(found) : std::nullopt;
}

StoredValue DataFile::ReadValue(std::string_view key) {
  const KeyMatcher matcher(lowerCase_, key);
  StoredValue result;
  result.isKnown = WithOpenFile([&] {
    // One pass finds every chunk; of entries with the same key, the first counts.
    Chunks chunks;
    for (EntryScan scan(*file_); scan.Next();) {
      const std::uint64_t chunk = matcher.ChunkIn(FirstField(scan.Text()));
      if (chunk != 0) chunks.try_emplace(chunk, scan.Number(), scan.Text());
    }
    result.text = Joined(chunks);
  });
  return result;
}

std::vector<std::optional<std::string>> DataFile::ReadValues(const std::vector<std::string>& keys) {
  const KeyIndex index(lowerCase_, keys);
  std::vector<std::optional<std::string>> results(keys.size());
  WithOpenFile([&] {
    std::vector<Chunks> found(keys.size());
    for (EntryScan scan(*file_); scan.Next();) {
      const auto [position, chunk] = index.ChunkIn(FirstField(scan.Text()));
      if (chunk != 0) found[position].try_emplace(chunk, scan.Number(), scan.Text());
    }
    for (std::size_t i = 0; i < keys.size(); ++i) results[i] = Joined(found[index.PositionOf(i)]);
  });
  return results;
}

std::optional<std::string> DataFile::Joined(const Chunks& chunks) {
  std::string value;
  std::uint64_t next = 1;
  for (auto chunk = chunks.find(next); chunk != chunks.end(); chunk = chunks.find(++next)) {
    const auto& [number, text] = chunk->second;
    value += EntryIn(SettledText(number, text)).value;
  }
  return next > 1 ? std::optional(std::move(value)) : std::nullopt;
}

bool DataFile::WriteEntry(EntryNumber number, const SettingsEntry& entry) {
  if (!OpenDataFile()) return false;
  const std::string text = RecordText(entry);
  if (text.size() != kTextSize) return false;
  const KeyMatcher key(lowerCase_, entry.key);
  Place place{number, {}, false};
  bool isWritten = false;
  Succeeds([&] {
    place = TakePlace(number, key);
    const bool isWhole = Succeeds([&] { Put(place, text); });
    const RecordNumber record = RecordOfEntry(place.number);
    // A part of a new entry would be found in place of what the next attempt writes.
    if (!isWhole && number == 0) {
      Succeeds([&] {
        if (IsOpenTo(key, LookAt(place.number))) ClearRecord(*file_, record);
      });
    }
    // Reading back tells whether it was written. After an attempt that is given up only because
    // this fails, a new entry would be written once more elsewhere.
    const auto readBack = [&] { isWritten = EntryIn(ReadRecord(*file_, record)) == entry; };
    if (!Succeeds(readBack)) readBack();
  });
  Succeeds([&] { lock_.ReleaseLock(*file_); });
  // A chosen record may have been another program's choice as well, and that one the last to write.
  if (place.number != number) {
    Succeeds([&] { isWritten = isWritten && IsOpenTo(key, LookAt(place.number)); });
  }
  CloseDataFile();
  return isWritten;
}

void DataFile::DeleteKey(std::string_view key) {
  const auto isMeant = [&](std::string_view text) {
    return WithoutContinuation(StoredKey(text)) == key;
  };
  WithOpenFile([&] {
    for (EntryScan scan(*file_); scan.Next();) ClearEntryIf(scan, isMeant);
  });
}

void DataFile::DeleteEntryExact(std::string_view name) {
  const auto isMeant = [&](std::string_view text) { return StoredKey(text) == name; };
  WithOpenFile([&] {
    for (EntryScan scan(*file_); scan.Next();) {
      if (ClearEntryIf(scan, isMeant)) return;
    }
  });
}

std::vector<std::string> DataFile::EnumEntries() {
  std::vector<std::string> keys;
  std::set<std::string> met;
  WithOpenFile([&] {
    for (EntryScan scan(*file_); scan.Next();) {
      const std::string stored = StoredKey(scan.Text());
      if (stored.empty()) continue;
      const std::string_view key = WithoutContinuation(stored);
      if (met.insert(LowerCase(key)).second) keys.emplace_back(key);
    }
  });
  return keys;
}

EntryNumber DataFile::Find(const KeyMatcher& key) {
  for (EntryScan scan(*file_); scan.Next();) {
    if (key.Matches(FirstField(scan.Text()))) return scan.Number();
  }
  return 0;
}

// The text of an entry's record, read until two readings agree: one that falls into another
// program's writing may have parts of two texts. Where the record has gone to another key, the text
// before.
std::string DataFile::SettledText(EntryNumber number, std::string text) {
  for (int looks = 0; looks < kMostLooks; ++looks) {
    std::string again = ReadRecord(*file_, RecordOfEntry(number));
    if (again == text || FirstField(again) != FirstField(text)) break;
    text = std::move(again);
  }
  return text;
}

SettingsEntry DataFile::EntryIn(std::string_view recordText) const {
  return {StoredKey(recordText), platform_.DecodeCodePage(CutAtNul(SecondField(recordText)))};
}

EntryNumber DataFile::FirstFreeEntry() {
  EntryScan scan(*file_);
  while (scan.Next()) {
    if (CutAtNul(scan.Text()).empty()) return scan.Number();
  }
  return scan.Number() + 1;
}

// Takes the lock and chooses the record of an entry. Both are looked at once more right before the
// record is written: the lock may have been taken twice, and programs that delete do not take it.
Place DataFile::TakePlace(EntryNumber number, const KeyMatcher& key) {
  for (int looks = 1;; ++looks) {
    lock_.TakeLock(*file_);
    const EntryNumber chosen = number != 0 ? number : FirstFreeEntry();
    const bool isHeld = lock_.IsHeld(*file_);
    Place place = LookAt(chosen);
    const bool isOpen = IsOpenTo(key, place);
    if ((isHeld && isOpen) || looks == kMostLooks) return place;
    if (!isOpen) number = Find(key);
  }
}

// Writes a record; a new one at the end gets a place of its own, even when another program adds
// one.
void DataFile::Put(Place& place, std::string_view text) {
  const RecordNumber record = RecordOfEntry(place.number);
  std::uint64_t size = file_->Size();
  // Another program's record may be half there.
  for (int looks = 0; looks < kMostLooks && size % kRecordSize != 0; ++looks) size = file_->Size();
  if (place.isBehindLast && size >= OffsetOfRecord(record) && size % kRecordSize == 0) {
    place.number = AppendRecord(*file_, text) - RecordOfEntry(0);
  } else {
    ReplaceRecord(*file_, record, place.text, text);
  }
}

Place DataFile::LookAt(EntryNumber number) {
  const bool isBehind = number > EntryCount(*file_);
  return {number, ReadRecord(*file_, RecordOfEntry(number)), isBehind};
}

// Clears the entry at hand if it is meant. It is looked at once more right before, since a scan
// reads ahead, and another program may have put an entry of its own there.
template <class Condition>
bool DataFile::ClearEntryIf(const EntryScan& scan, Condition isMeant) {
  const RecordNumber record = RecordOfEntry(scan.Number());
  if (!isMeant(scan.Text()) || !isMeant(ReadRecord(*file_, record))) return false;
  ClearRecord(*file_, record);
  return true;
}

std::string DataFile::RecordText(const SettingsEntry& entry) const {
  return PadWithNuls(platform_.EncodeCodePage(entry.key), kFieldSize) +
         PadWithNuls(platform_.EncodeCodePage(entry.value), kFieldSize);
}

std::string DataFile::StoredKey(std::string_view recordText) const {
  return platform_.DecodeCodePage(CutAtNul(FirstField(recordText)));
}

}  // namespace tarvo
