#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/platform.h"

namespace tarvo {

class DataFile;

// The settings store: named text values in a file of fixed records that the maker's programs share,
// in place of the system registry. The file's bytes are described in settings/record_layout.h.
// Every operation opens the file, works and closes it again; a file that cannot be used makes reads
// give the default and writes do nothing.
//
// A key has at most 1000 characters of the code page and no "~"; GetSetting and SaveSetting raise
// error 5 for any other. Letter case is ignored when a value is read or written, and counts when it
// is deleted. These errors, and that of OpenLocalRegistry, are the only ones that leave the store.
//
// Writing waits for the lock of settings/record_lock.h without pause or limit.
class RegistryReplacement {
 public:
  // Takes the owner identity from the clock: two stores made in the same hundredth of a second
  // share it and do not exclude each other.
  explicit RegistryReplacement(Platform& platform);
  ~RegistryReplacement();
  RegistryReplacement(const RegistryReplacement&) = delete;
  RegistryReplacement& operator=(const RegistryReplacement&) = delete;

  // Finds the data folder of the company and opens the file there, making both as needed. A name
  // that is not "" becomes the company's first; error 5 when there is none.
  void OpenLocalRegistry(const std::string& newCompanyName = {});

  // The name of the sub-folder that the data file lies in.
  void SetCompanyName(std::string name);
  const std::string& CompanyName() const;

  // Deletes an entry with all its continuation records; the key's letter case counts. Takes no
  // lock.
  void DeleteKey(std::string_view key);

  // The distinct keys in the order of their first appearance; of spellings that differ in letter
  // case only, the first.
  std::vector<std::string> EnumEntries();

  // The stored value, also when it is "", or the default when there is none.
  std::string GetSetting(std::string_view keyName, std::string_view defaultValue);

  // The same, but nothing when the file could not be read: another look may find a value.
  std::optional<std::string> KnownSetting(std::string_view keyName, std::string_view defaultValue);

  // What GetSetting gives for each of the keys, from one reading of the file. Error 5 when it
  // raises that for one of them.
  std::vector<std::string> GetSettings(const std::vector<std::string>& keyNames,
                                       std::string_view defaultValue);

  // Whether GetSetting and SaveSetting take the key.
  bool IsKey(std::string_view key) const;

  // Stores a value of any length, and blanks what a longer one before it has left. What cannot be
  // written and read back after eleven attempts is given up silently; that includes a NUL and a
  // character that the code page lacks, which have then been stored eleven times, cut at the NUL or
  // with "?" in its place.
  void SaveSetting(std::string_view key, std::string_view value);

  // Closes the file if an operation has left it open.
  void CloseRegistry();

  // The path of the data file, "" when none is usable. Setting it opens the file once, which makes
  // it and its lock record as needed and clears a stale lock.
  void SetRegistryDataFile(std::string path);
  const std::string& RegistryDataFile() const;

 private:
  std::string DataFolder();
  void CheckKey(std::string_view key) const;
  std::vector<std::string_view> ChunksOf(std::string_view value) const;
  void SaveChunk(const std::string& chunkKey, std::string_view chunk);

  Platform& platform_;
  std::unique_ptr<DataFile> dataFile_;
  std::string companyName_;
};

}  // namespace tarvo
