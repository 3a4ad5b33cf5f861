#include "translate/dictionary_table.h"

#include <algorithm>
#include <cstdint>

#include "base/runtime_error.h"
#include "base/text.h"
#include "platform/names.h"

namespace tarvo {
namespace {

int FieldPosition(std::string_view name) {
  if (EqualIgnoringCase(name, kEnglishField)) return kEnglishPosition;
  if (EqualIgnoringCase(name, kTranslationField)) return kTranslationPosition;
  throw RuntimeError(kSubscriptOutOfRange);
}

// Appends the text's lower-case form. The order of its bytes is the order of its code points.
void AppendFolded(std::string& buffer, std::string_view text) {
  const auto takeAscii = [&](std::string_view ascii) {
    std::size_t at = buffer.size();
    buffer += ascii;
    for (; at < buffer.size(); ++at) {
      if (buffer[at] >= 'A' && buffer[at] <= 'Z') buffer[at] += 'a' - 'A';
    }
  };
  ForEachRun(text, takeAscii, [&](char32_t c) { AppendCharacter(buffer, LowerCase(c)); });
}

// The first eight bytes as one number that orders like them: it decides most comparisons of a sort.
std::uint64_t OrderPrefix(std::string_view folded) {
  std::uint64_t prefix = 0;
  for (std::size_t i = 0; i < sizeof prefix; ++i) {
    prefix = prefix << 8 | (i < folded.size() ? static_cast<unsigned char>(folded[i]) : 0U);
  }
  return prefix;
}

struct SortKey {
  std::uint64_t prefix;
  std::string_view folded;
  std::string_view text;
  const MoEntry* entry;

  bool operator<(const SortKey& other) const {
    if (prefix != other.prefix) return prefix < other.prefix;
    const int order = folded.compare(other.folded);
    if (order != 0) return order < 0;
    if (text != other.text) return text < other.text;
    return entry < other.entry;
  }
};

}  // namespace

const MoEntry DictionaryTable::kNoEntry{};

DictionaryTable::Field DictionaryTable::Record::Item(std::string_view name) const {
  return Item(FieldPosition(name));
}

DictionaryTable::Field DictionaryTable::Record::NoSuchField() {
  throw RuntimeError(kSubscriptOutOfRange);
}

void DictionaryTable::SetFileName(Platform& platform, std::string_view fileName) {
  if (fileName.empty()) {
    *this = {};
    return;
  }
  auto file = std::make_shared<LoadedFile>();
  file->name = fileName;
  file->bytes = ReadWholeFile(platform, fileName);
  file->content = ReadMoFile(file->bytes, fileName);
  file_ = std::move(file);
  records_ = file_->content.entries;
  positions_ = {};
  current_ = 0;
}

void DictionaryTable::SetFileName(const DictionaryTable& other) {
  file_ = other.file_;
  records_ = file_ ? file_->content.entries : std::vector<MoEntry>{};
  positions_ = {};
  current_ = 0;
}

const std::string& DictionaryTable::FileName() const {
  static const std::string none;
  return file_ ? file_->name : none;
}

std::string_view DictionaryTable::Language() const {
  return file_ ? file_->content.language : std::string_view();
}

void DictionaryTable::SetOrderField(std::string_view name) {
  const int position = FieldPosition(name);
  current_ = 0;
  if (!file_) return;

  std::size_t size = 0;
  for (const MoEntry& entry : file_->content.entries)
    size += Record(entry).Item(position).Value().size();
  std::string folded;
  std::vector<std::size_t> ends;
  folded.reserve(2 * size);
  ends.reserve(file_->content.entries.size());
  for (const MoEntry& entry : file_->content.entries) {
    AppendFolded(folded, Record(entry).Item(position).Value());
    ends.push_back(folded.size());
  }

  std::vector<SortKey> keys;
  keys.reserve(file_->content.entries.size());
  std::size_t start = 0;
  for (const MoEntry& entry : file_->content.entries) {
    const std::size_t end = ends[keys.size()];
    const std::string_view key = std::string_view(folded).substr(start, end - start);
    keys.push_back({OrderPrefix(key), key, Record(entry).Item(position).Value(), &entry});
    start = end;
  }
  std::sort(keys.begin(), keys.end());
  for (std::size_t i = 0; i < keys.size(); ++i) records_[i] = *keys[i].entry;
  positions_ = {};
  if (position == kEnglishPosition) positions_.Build(records_);
}

void DictionaryTable::MoveTo(int position) {
  if (position < 1 || position > RecordCount()) throw RuntimeError(kSubscriptOutOfRange);
  current_ = static_cast<std::size_t>(position) - 1;
}

}  // namespace tarvo
