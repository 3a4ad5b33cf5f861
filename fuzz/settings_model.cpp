#include "settings_model.h"

#include <algorithm>
#include <cmath>

#include "base/code_page.h"
#include "base/text.h"

namespace tarvo::fuzz {
namespace {

constexpr std::size_t kField = 1024;

std::string Padded(std::string text, std::size_t size) {
  text.resize(size);
  return text;
}

std::string_view WithoutNulsBehind(std::string_view text) {
  // Mostly all that stands behind the first is NULs, which one comparison tells.
  static const std::string kNuls(kField, '\0');
  const std::string_view start = text.substr(0, text.find('\0'));
  const std::string_view rest = text.substr(start.size());
  if (rest == std::string_view(kNuls).substr(0, rest.size())) return start;
  return text.substr(0, text.find_last_not_of('\0') + 1);
}

std::string_view UpTo(std::string_view text, char end) { return text.substr(0, text.find(end)); }

// Whether bytes of the code page are a text in any letter case. Each byte is one character.
bool IsText(std::string_view bytes, std::string_view text) {
  return bytes.size() == CharacterCount(text) && EqualIgnoringCase(DecodeWindows1252(bytes), text);
}

std::string ChunkKey(std::string_view key, std::size_t number) {
  return std::string(key) + (number == 1 ? "" : "~" + std::to_string(number));
}

}  // namespace

bool SettingsModel::IsKey(std::string_view key) {
  const std::string stored = EncodeWindows1252(key);
  return stored.size() <= 1000 && stored.find('~') == std::string::npos;
}

std::vector<std::string> SettingsModel::ChunksOf(std::string_view value) {
  std::vector<std::string> chunks(1);
  std::size_t count = 0;
  for (std::size_t i = 0; i < value.size();) {
    if (count == kField) {
      chunks.emplace_back();
      count = 0;
    }
    const std::size_t size = CharacterAt(value, i).size;
    chunks.back() += value.substr(i, size);
    i += size;
    ++count;
  }
  return chunks;
}

long SettingsModel::Count() const {
  const double records = static_cast<double>(bytes_.size()) / kRecord;
  return std::max(0L, static_cast<long>(std::nearbyint(records - 1)));
}

std::string_view SettingsModel::KeyField(long entry) const {
  const std::size_t start = static_cast<std::size_t>(entry) * kRecord + 2;
  if (start >= bytes_.size()) return {};
  return WithoutNulsBehind(std::string_view(bytes_).substr(start, kField));
}

std::string SettingsModel::StoredKey(long entry) const {
  return DecodeWindows1252(UpTo(KeyField(entry), '\0'));
}

std::string SettingsModel::StoredValue(long entry) const {
  const std::size_t start = static_cast<std::size_t>(entry) * kRecord + 2 + kField;
  if (start >= bytes_.size()) return {};
  return DecodeWindows1252(UpTo(std::string_view(bytes_).substr(start, kField), '\0'));
}

std::string SettingsModel::BareKey(long entry) const {
  return DecodeWindows1252(UpTo(UpTo(KeyField(entry), '\0'), '~'));
}

bool SettingsModel::IsOf(long entry, std::string_view key) const {
  return IsText(UpTo(UpTo(KeyField(entry), '\0'), '~'), key);
}

bool SettingsModel::IsFree(long entry) const {
  const std::size_t start = static_cast<std::size_t>(entry) * kRecord + 2;
  return start >= bytes_.size() || bytes_[start] == '\0';
}

long SettingsModel::Find(std::string_view key) const {
  const std::string_view wanted = WithoutNulsBehind(key);
  for (long entry = 1; entry <= Count(); ++entry) {
    if (IsText(KeyField(entry), wanted)) return entry;
  }
  return 0;
}

void SettingsModel::Write(long entry, std::string_view keyField, std::string_view valueField) {
  const std::size_t start = static_cast<std::size_t>(entry) * kRecord;
  if (bytes_.size() < start + kRecord) bytes_.resize(start + kRecord);
  const std::string record = std::string("\0\x08", 2) + Padded(std::string(keyField), kField) +
                             Padded(std::string(valueField), kField);
  bytes_.replace(start, kRecord, record);
}

void SettingsModel::SaveChunk(const std::string& key, std::string_view value) {
  const long found = Find(key);
  for (int attempt = 0; attempt < 11; ++attempt) {
    long entry = found == 0 ? 1 : found;
    while (found == 0 && entry <= Count() && !IsFree(entry)) ++entry;
    Write(entry, EncodeWindows1252(key), EncodeWindows1252(value));
    if (StoredKey(entry) == key && StoredValue(entry) == value) return;
  }
}

bool SettingsModel::Save(std::string_view key, std::string_view value) {
  if (!IsKey(key)) return false;
  std::size_t number = 0;
  for (const std::string& chunk : ChunksOf(value)) SaveChunk(ChunkKey(key, ++number), chunk);
  while (Find(ChunkKey(key, ++number)) != 0) {
    for (long entry = 1; entry <= Count(); ++entry) {
      if (StoredKey(entry) != ChunkKey(key, number)) continue;
      Write(entry, "", "");
      break;
    }
  }
  return true;
}

std::optional<std::string> SettingsModel::Get(std::string_view key) const {
  if (Find(key) == 0) return std::nullopt;
  std::string value;
  for (std::size_t number = 1;; ++number) {
    const long entry = Find(ChunkKey(key, number));
    if (entry == 0) return value;
    value += StoredValue(entry);
  }
}

void SettingsModel::Delete(std::string_view key) {
  for (long entry = 1; entry <= Count(); ++entry) {
    if (IsOf(entry, key) && BareKey(entry) == key) Write(entry, "", "");
  }
}

std::vector<std::string> SettingsModel::Keys() const {
  std::vector<std::string> keys;
  for (long entry = 1; entry <= Count(); ++entry) {
    if (UpTo(KeyField(entry), '\0').empty()) continue;
    const std::string key = BareKey(entry);
    const bool isMet = std::any_of(keys.begin(), keys.end(), [&](const std::string& met) {
      return EqualIgnoringCase(met, key);
    });
    if (!isMet) keys.push_back(key);
  }
  return keys;
}

}  // namespace tarvo::fuzz
