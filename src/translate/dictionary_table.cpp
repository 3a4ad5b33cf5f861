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

// The first eight bytes of the text's lower-case form as one number that orders like them. It
// decides nearly every comparison of a sort. The order of bytes is the order of code points.
std::uint64_t OrderPrefix(std::string_view text) {
  constexpr std::size_t kBytes = 8;
  std::string folded;
  for (std::size_t i = 0; i < text.size() && folded.size() < kBytes;) {
    const Character c = CharacterAt(text, i);
    AppendCharacter(folded, LowerCase(c.codePoint));
    i += c.size;
  }
  folded.resize(kBytes);
  std::uint64_t prefix = 0;
  for (const char byte : folded) prefix = prefix << 8 | static_cast<unsigned char>(byte);
  return prefix;
}

struct SortKey {
  std::uint64_t prefix;
  std::string_view text;
  std::size_t index;

  bool operator<(const SortKey& other) const {
    if (prefix != other.prefix) return prefix < other.prefix;
    const int order = CompareIgnoringCase(text, other.text);
    if (order != 0) return order < 0;
    if (text != other.text) return text < other.text;
    return index < other.index;
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
  file->entries = ReadMoFile(file->bytes, fileName);
  file_ = std::move(file);
  records_ = file_->entries;
  current_ = 0;
}

void DictionaryTable::SetFileName(const DictionaryTable& other) {
  file_ = other.file_;
  records_ = file_ ? file_->entries : std::vector<MoEntry>{};
  current_ = 0;
}

const std::string& DictionaryTable::FileName() const {
  static const std::string none;
  return file_ ? file_->name : none;
}

void DictionaryTable::SetOrderField(std::string_view name) {
  const int position = FieldPosition(name);
  current_ = 0;
  if (!file_) return;
  std::vector<SortKey> keys;
  keys.reserve(file_->entries.size());
  for (const MoEntry& entry : file_->entries) {
    const std::string_view text = Record(entry).Item(position).Value();
    keys.push_back({OrderPrefix(text), text, keys.size()});
  }
  std::sort(keys.begin(), keys.end());
  for (std::size_t i = 0; i < keys.size(); ++i) records_[i] = file_->entries[keys[i].index];
}

void DictionaryTable::MoveTo(int position) {
  if (position < 1 || position > RecordCount()) throw RuntimeError(kSubscriptOutOfRange);
  current_ = static_cast<std::size_t>(position) - 1;
}

}  // namespace tarvo
