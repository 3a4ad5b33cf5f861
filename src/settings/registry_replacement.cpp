#include "settings/registry_replacement.h"

#include <utility>

#include "base/paths.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "platform/special_folder.h"
#include "settings/data_file.h"
#include "settings/trace.h"

namespace tarvo {
namespace {

constexpr int kWriteAttempts = 11;

// The key under which a chunk of a value is stored; chunks are counted from 1.
std::string ChunkKey(std::string_view key, std::size_t chunk) {
  std::string result(key);
  if (chunk > 1) result.append(1, kContinuationSign).append(std::to_string(chunk));
  return result;
}

}  // namespace

RegistryReplacement::RegistryReplacement(Platform& platform)
    : platform_(platform), dataFile_(std::make_unique<DataFile>(platform)) {}

RegistryReplacement::~RegistryReplacement() = default;

void RegistryReplacement::OpenLocalRegistry(const std::string& newCompanyName) {
  if (!newCompanyName.empty()) companyName_ = newCompanyName;
  if (companyName_.empty()) throw RuntimeError(kInvalidProcedureCall);
  SetRegistryDataFile(DataFolder().append(kDataFileName));
}

void RegistryReplacement::SetCompanyName(std::string name) { companyName_ = std::move(name); }

const std::string& RegistryReplacement::CompanyName() const { return companyName_; }

void RegistryReplacement::DeleteKey(std::string_view key) { dataFile_->DeleteKey(key); }

std::vector<std::string> RegistryReplacement::EnumEntries() { return dataFile_->EnumEntries(); }

std::string RegistryReplacement::GetSetting(std::string_view keyName,
                                            std::string_view defaultValue) {
  return KnownSetting(keyName, defaultValue).value_or(std::string(defaultValue));
}

std::optional<std::string> RegistryReplacement::KnownSetting(std::string_view keyName,
                                                             std::string_view defaultValue) {
  CheckKey(keyName);
  StoredValue stored = dataFile_->ReadValue(keyName);
  if (!stored.isKnown) return std::nullopt;
  return std::move(stored.text).value_or(std::string(defaultValue));
}

std::vector<std::string> RegistryReplacement::GetSettings(const std::vector<std::string>& keyNames,
                                                          std::string_view defaultValue) {
  for (const std::string& key : keyNames) CheckKey(key);
  std::vector<std::string> values;
  values.reserve(keyNames.size());
  for (std::optional<std::string>& value : dataFile_->ReadValues(keyNames)) {
    values.push_back(std::move(value).value_or(std::string(defaultValue)));
  }
  return values;
}

void RegistryReplacement::SaveSetting(std::string_view key, std::string_view value) {
  CheckKey(key);
  std::size_t chunk = 0;
  for (const std::string_view text : ChunksOf(value)) SaveChunk(ChunkKey(key, ++chunk), text);
  while (dataFile_->FindEntry(ChunkKey(key, ++chunk)).value_or(0) != 0) {
    dataFile_->DeleteEntryExact(ChunkKey(key, chunk));
  }
}

void RegistryReplacement::CloseRegistry() { dataFile_->CloseDataFile(); }

void RegistryReplacement::SetRegistryDataFile(std::string path) {
  dataFile_->SetPath(std::move(path));
  if (!dataFile_->OpenDataFile()) dataFile_->SetPath({});
  dataFile_->CloseDataFile();
}

const std::string& RegistryReplacement::RegistryDataFile() const { return dataFile_->Path(); }

std::string RegistryReplacement::DataFolder() {
  std::string documents = GetSpecialFolder(platform_, kCommonDocuments);
  if (documents == WithSeparator("")) documents = GetSpecialFolder(platform_, kPersonalDocuments);
  // Where it cannot be made, the file in it cannot be opened.
  return WithSeparator(MadeFolder(platform_, documents + companyName_));
}

bool RegistryReplacement::IsKey(std::string_view key) const {
  const std::string stored = platform_.EncodeCodePage(key);
  return stored.size() <= kLongestKey && stored.find(kContinuationSign) == std::string::npos;
}

void RegistryReplacement::CheckKey(std::string_view key) const {
  if (!IsKey(key)) throw RuntimeError(kInvalidProcedureCall);
}

// Cuts a value into the texts that fill one field each, the last one excepted; one empty text for
// an empty value.
std::vector<std::string_view> RegistryReplacement::ChunksOf(std::string_view value) const {
  std::vector<std::string_view> chunks;
  std::size_t start = 0;
  std::size_t used = 0;  // of the field, in bytes of the code page
  for (std::size_t i = 0; i < value.size();) {
    const std::size_t size = CharacterAt(value, i).size;
    used += platform_.EncodeCodePage(value.substr(i, size)).size();
    if (used > kFieldSize) {
      chunks.push_back(value.substr(start, i - start));
      start = i;
      used = platform_.EncodeCodePage(value.substr(i, size)).size();
    }
    i += size;
  }
  chunks.push_back(value.substr(start));
  return chunks;
}

// The entry is found once, whatever becomes of the attempts. One that cannot be looked for is not
// taken for a new one: the value would get a second record, which is never read.
void RegistryReplacement::SaveChunk(const std::string& chunkKey, std::string_view chunk) {
  std::optional<EntryNumber> number;
  const SettingsEntry entry{chunkKey, std::string(chunk)};
  for (int attempt = 0; attempt < kWriteAttempts; ++attempt) {
    if (!number) number = dataFile_->FindEntry(chunkKey);
    if (number && dataFile_->WriteEntry(*number, entry)) return;
  }
  Trace("retries!!");
}

}  // namespace tarvo
