#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::fuzz {

// The settings file and its operations once more, as docs/settings-file.md tells them, without a
// thought for speed, locks and failures: what the store must do to the entries of a file. Texts are
// UTF-8.
class SettingsModel {
 public:
  static constexpr std::size_t kRecord = 2050;

  explicit SettingsModel(std::string bytes) : bytes_(std::move(bytes)) {}

  // The file with a lock record that nobody holds.
  const std::string& Bytes() const { return bytes_; }

  // False for a key that is refused.
  bool Save(std::string_view key, std::string_view value);
  // Nothing when there is none. The key must be one that is not refused.
  std::optional<std::string> Get(std::string_view key) const;
  void Delete(std::string_view key);
  std::vector<std::string> Keys() const;

  static bool IsKey(std::string_view key);
  static std::vector<std::string> ChunksOf(std::string_view value);

  // Of an entry, counted from 1: the key's bytes with the NULs that are not behind it, the key as
  // text before the first NUL and the first "~", and whether that is a key in any letter case.
  std::string_view KeyField(long entry) const;
  std::string BareKey(long entry) const;
  bool IsOf(long entry, std::string_view key) const;
  long Count() const;
  bool IsFree(long entry) const;

 private:
  std::string StoredKey(long entry) const;
  std::string StoredValue(long entry) const;
  long Find(std::string_view key) const;
  void Write(long entry, std::string_view keyField, std::string_view valueField);
  void SaveChunk(const std::string& key, std::string_view value);

  std::string bytes_;
};

}  // namespace tarvo::fuzz
