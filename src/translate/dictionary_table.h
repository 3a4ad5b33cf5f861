#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/platform.h"
#include "translate/mo_file.h"
#include "translate/phrase_positions.h"

namespace tarvo {

// Names of a record's fields, and their positions.
inline constexpr std::string_view kEnglishField = "ENGLISH";
inline constexpr std::string_view kTranslationField = "TRANSLATION";
inline constexpr int kEnglishPosition = 1;
inline constexpr int kTranslationPosition = 2;

// A cursor over the records of a dictionary file (see docs/dictionary.md), each an English phrase
// and its translation. Several cursors, each in its own order, can stand on one loaded file.
//
// Positions count from 1. Behind the last record, and in a table without records, the current
// record is one whose fields are empty.
class DictionaryTable {
 public:
  class Field {
   public:
    explicit Field(std::string_view value) : value_(value) {}
    std::string_view Value() const { return value_; }

   private:
    std::string_view value_;
  };

  class Record {
   public:
    explicit Record(const MoEntry& entry) : entry_(&entry) {}

    // A field by its name, letter case ignored, or by its position; error 9 when there is none.
    Field Item(std::string_view name) const;
    Field Item(int position) const {
      if (position == kEnglishPosition) return Field(entry_->original);
      if (position == kTranslationPosition) return Field(entry_->translation);
      return NoSuchField();
    }

   private:
    [[noreturn]] static Field NoSuchField();

    const MoEntry* entry_;
  };

  // Reads a file, found in any letter case of its name, and stands on its first record in the
  // file's own order. Error 53 when it is missing, 321 when it is no dictionary; the table is then
  // as it was before. "" closes the file.
  void SetFileName(Platform& platform, std::string_view fileName);

  // Opens the file that another table has open, without reading it again.
  void SetFileName(const DictionaryTable& other);

  // The open file's name as it was given; "" when none is open.
  const std::string& FileName() const;

  // The language that the open file says its translations are in, such as "de" or "de_AT"; "" when
  // it says none or no file is open.
  std::string_view Language() const;

  // Orders the records by a field, ascending without regard to letter case, ties by code point, and
  // stands on the first. Error 9 for an unknown field.
  void SetOrderField(std::string_view name);

  int RecordCount() const { return static_cast<int>(records_.size()); }

  // Makes the record at a position current; error 9 unless it is 1 to RecordCount().
  void MoveTo(int position);

  // Advances to the next record, behind the last one at most.
  void MoveNext() {
    if (!AtEnd()) ++current_;
  }

  // Scans forward, the current record included, for the one whose English phrase is exactly this,
  // and makes it current; false, moving nothing, when there is none. The records must be in the
  // order of the English field. The same as a loop of MoveNext, but looks at no other record.
  bool ScanFor(std::string_view english) {
    const std::size_t position = positions_.Find(records_, english);
    if (position == PhrasePositions::kNone || position < current_) return false;
    current_ = position;
    return true;
  }

  bool AtEnd() const { return current_ >= records_.size(); }

  Record CurrentRecord() const { return Record(AtEnd() ? kNoEntry : records_[current_]); }

 private:
  struct LoadedFile {
    std::string name;
    std::string bytes;
    MoFile content;
  };

  static const MoEntry kNoEntry;

  std::shared_ptr<const LoadedFile> file_;
  std::vector<MoEntry> records_;  // in this cursor's order; views into the file's bytes
  PhrasePositions positions_;     // in the order of the English field only
  std::size_t current_ = 0;
};

}  // namespace tarvo
