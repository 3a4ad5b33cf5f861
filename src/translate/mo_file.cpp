#include "translate/mo_file.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "base/runtime_error.h"
#include "base/text.h"
#include "translate/mo_format.h"

namespace tarvo {
namespace {

// The most bytes of text that a dictionary may have altogether. Texts may overlap in the file, so a
// small one can name so much that no memory holds it.
constexpr std::uint64_t kMostText = std::uint64_t{16} * 1024 * 1024;

class Reader {
 public:
  Reader(std::string_view bytes, std::string_view fileName) : bytes_(bytes), fileName_(fileName) {
    if (bytes_.size() < mo::kHeaderSize) Refuse("is too short to be a dictionary");
    const std::uint32_t magic = NumberAt(0);
    if (magic == mo::kMagicSwapped) bigEndian_ = true;
    if (!bigEndian_ && magic != mo::kMagic) Refuse("is not a dictionary");
    if (NumberAt(mo::kRevisionAt) >> 16 > mo::kLastMajorRevision) {
      Refuse("is a dictionary of a kind that is too new");
    }
  }

  // An entry of the table whose offset stands at `table` in the header.
  std::string_view TextAt(std::uint32_t table, std::uint32_t index) const {
    const std::uint64_t entry =
        std::uint64_t{NumberAt(table)} + std::uint64_t{index} * mo::kTableEntrySize;
    Require(entry, mo::kTableEntrySize);
    const std::uint32_t size = NumberAt(entry);
    const std::uint32_t offset = NumberAt(entry + 4);
    Require(offset, std::uint64_t{size} + 1);
    if (bytes_[std::uint64_t{offset} + size] != '\0') Refuse("is damaged");
    return bytes_.substr(offset, size);
  }

  std::uint32_t Count() const {
    const std::uint32_t count = NumberAt(mo::kCountAt);
    for (const std::uint32_t table : {mo::kOriginalsAt, mo::kTranslationsAt}) {
      Require(NumberAt(table), std::uint64_t{count} * mo::kTableEntrySize);
    }
    return count;
  }

  // Refuses the file when there is more text in its records than any dictionary has.
  void CheckAmount(std::uint64_t textBytes) const {
    if (textBytes > kMostText) Refuse("has more text than any dictionary");
  }

  // The description is a list of lines; without a character set in it the text is taken as UTF-8.
  void CheckCharacterSet(std::string_view description) const {
    const std::size_t field = description.find(mo::kCharsetField);
    if (field == std::string_view::npos) return;
    const std::string_view rest = description.substr(field + mo::kCharsetField.size());
    const std::string_view name = rest.substr(0, rest.find_first_of(" \t\r\n;"));
    constexpr std::string_view kKnown[] = {"UTF-8", "UTF8", "ASCII", "US-ASCII", "ANSI_X3.4-1968"};
    for (const std::string_view known : kKnown) {
      if (EqualIgnoringCase(name, known)) return;
    }
    Refuse("is in the character set " + ValidUtf8(name) + "; only UTF-8 can be read");
  }

 private:
  [[noreturn]] void Refuse(const std::string& why) const {
    throw RuntimeError(kInvalidFileFormat,
                       "The dictionary \"" + fileName_ + "\" cannot be used: " + "it " + why + ".");
  }

  void Require(std::uint64_t offset, std::uint64_t size) const {
    if (offset + size > bytes_.size()) Refuse("is cut short or damaged");
  }

  std::uint32_t NumberAt(std::uint64_t offset) const {
    std::uint32_t value = 0;
    for (std::uint64_t i = 0; i < 4; ++i) {
      const auto byte = static_cast<unsigned char>(bytes_[offset + i]);
      value |= std::uint32_t{byte} << (8 * (bigEndian_ ? 3 - i : i));
    }
    return value;
  }

  std::string_view bytes_;
  std::string fileName_;
  bool bigEndian_ = false;
};

std::string_view LanguageIn(std::string_view description) {
  constexpr std::string_view kBlanks = " \t\r";
  while (!description.empty()) {
    const std::size_t end = std::min(description.find('\n'), description.size());
    const std::string_view line = description.substr(0, end);
    if (EqualIgnoringCase(line.substr(0, mo::kLanguageField.size()), mo::kLanguageField)) {
      std::string_view value = line.substr(mo::kLanguageField.size());
      value.remove_prefix(std::min(value.find_first_not_of(kBlanks), value.size()));
      return value.substr(0, value.find_last_not_of(kBlanks) + 1);
    }
    description.remove_prefix(std::min(end + 1, description.size()));
  }
  return {};
}

}  // namespace

MoFile ReadMoFile(std::string_view bytes, std::string_view fileName) {
  const Reader reader(bytes, fileName);
  const std::uint32_t count = reader.Count();
  MoFile file;
  file.entries.reserve(count);
  std::uint64_t textBytes = 0;
  for (std::uint32_t i = 0; i < count; ++i) {
    const MoEntry entry{reader.TextAt(mo::kOriginalsAt, i), reader.TextAt(mo::kTranslationsAt, i)};
    textBytes += entry.original.size() + entry.translation.size();
    reader.CheckAmount(textBytes);
    if (entry.original.empty()) {
      reader.CheckCharacterSet(entry.translation);
      file.language = LanguageIn(entry.translation);
      continue;
    }
    const auto has = [&](char sign) { return entry.original.find(sign) != std::string_view::npos; };
    const bool isSkipped = has(mo::kContextSeparator) || has(mo::kPluralSeparator);
    if (!isSkipped) file.entries.push_back(entry);
  }
  return file;
}

}  // namespace tarvo
