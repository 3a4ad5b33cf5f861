#include "settings/data_file.h"

#include <map>
#include <set>

#include "base/runtime_error.h"
#include "base/text.h"
#include "platform/names.h"
#include "settings/records.h"

namespace tarvo {
namespace {

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

// Opens the file, does the work on it and closes it; a failure ends the work silently.
template <class Work>
void DataFile::WithOpenFile(Work work) {
  if (!OpenDataFile()) return;
  Succeeds(work);
  CloseDataFile();
}

EntryNumber DataFile::FindEntry(std::string_view key) {
  const KeyMatcher matcher(lowerCase_, key);
  EntryNumber found = 0;
  WithOpenFile([&] {
    for (EntryScan scan(*file_); found == 0 && scan.Next();) {
      if (matcher.Matches(FirstField(scan.Text()))) found = scan.Number();
    }
  });
  return found;
}

std::optional<std::string> DataFile::ReadValue(std::string_view key) {
  const KeyMatcher matcher(lowerCase_, key);
  std::optional<std::string> result;
  WithOpenFile([&] {
    // One pass finds every chunk; of entries with the same key, the first counts.
    std::map<std::uint64_t, EntryNumber> chunks;
    for (EntryScan scan(*file_); scan.Next();) {
      const std::uint64_t chunk = matcher.ChunkIn(FirstField(scan.Text()));
      if (chunk != 0) chunks.try_emplace(chunk, scan.Number());
    }
    std::string value;
    std::uint64_t next = 1;
    for (auto chunk = chunks.find(next); chunk != chunks.end(); chunk = chunks.find(++next)) {
      value += ReadEntry(chunk->second).value;
    }
    if (next > 1) result = std::move(value);
  });
  return result;
}

bool DataFile::WriteEntry(EntryNumber number, const SettingsEntry& entry) {
  if (!OpenDataFile()) return false;
  const std::string text = RecordText(entry);
  if (text.size() != kTextSize) return false;
  SettingsEntry readBack;
  bool complete = false;
  Succeeds([&] {
    lock_.TakeLock(*file_);
    if (number == 0) number = FirstFreeEntry();
    // Reading back tells whether it was written.
    Succeeds([&] { WriteRecord(*file_, RecordOfEntry(number), text); });
    readBack = ReadEntry(number);
    complete = true;
  });
  Succeeds([&] { lock_.ReleaseLock(*file_); });
  CloseDataFile();
  return complete && readBack == entry;
}

void DataFile::DeleteKey(std::string_view key) {
  WithOpenFile([&] {
    for (EntryScan scan(*file_); scan.Next();) {
      if (WithoutContinuation(StoredKey(scan.Text())) == key) {
        ClearRecord(*file_, RecordOfEntry(scan.Number()));
      }
    }
  });
}

void DataFile::DeleteEntryExact(std::string_view name) {
  WithOpenFile([&] {
    for (EntryScan scan(*file_); scan.Next();) {
      if (StoredKey(scan.Text()) == name) {
        ClearRecord(*file_, RecordOfEntry(scan.Number()));
        return;
      }
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

SettingsEntry DataFile::ReadEntry(EntryNumber number) {
  const std::string text = ReadRecord(*file_, RecordOfEntry(number));
  return {StoredKey(text), platform_.DecodeCodePage(CutAtNul(SecondField(text)))};
}

EntryNumber DataFile::FirstFreeEntry() {
  EntryScan scan(*file_);
  while (scan.Next()) {
    if (CutAtNul(scan.Text()).empty()) return scan.Number();
  }
  return scan.Number() + 1;
}

std::string DataFile::RecordText(const SettingsEntry& entry) const {
  return PadWithNuls(platform_.EncodeCodePage(entry.key), kFieldSize) +
         PadWithNuls(platform_.EncodeCodePage(entry.value), kFieldSize);
}

std::string DataFile::StoredKey(std::string_view recordText) const {
  return platform_.DecodeCodePage(CutAtNul(FirstField(recordText)));
}

}  // namespace tarvo
