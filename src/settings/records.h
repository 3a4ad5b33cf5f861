#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/file.h"
#include "settings/record_layout.h"

namespace tarvo {

// The text with NUL bytes behind it up to `length` bytes; a longer text stays as it is.
std::string PadWithNuls(std::string text, std::size_t length);

// The text of a record: kTextSize bytes in the code page. What lies behind the end of the file
// reads as NUL bytes, and the stored length is not looked at. Throws RuntimeError.
std::string ReadRecord(File& file, RecordNumber record);

// Writes a whole record around a text of kTextSize bytes, in one call. Throws RuntimeError.
void WriteRecord(File& file, RecordNumber record, std::string_view text);

// Writes a record in the place of one with the text `old`. A process killed meanwhile leaves the
// one or the other, if the old value is shorter than the part of the record that lies on the file's
// first page, or the record is empty: the system ends the call of a killed process where a page
// ends, and what lies behind is then written ahead, where it does not count yet. Throws
// RuntimeError.
void ReplaceRecord(File& file, RecordNumber record, std::string_view old, std::string_view text);

// Adds a record at the end of a file of whole records; gives its number. Programs that add theirs
// at the same time do not overwrite each other's where the system can append in one step. Throws
// RuntimeError.
RecordNumber AppendRecord(File& file, std::string_view text);

// Makes a record an empty one. Throws RuntimeError.
void ClearRecord(File& file, RecordNumber record);

// The two fields of a record's text, with their padding.
std::string_view FirstField(std::string_view text);
std::string_view SecondField(std::string_view text);

// How many entries a file of its present length has: the number of records less one, rounded to the
// nearest whole number, halves to the even one; never negative. Throws RuntimeError.
EntryNumber EntryCount(File& file);

// Walks over the entries that the file has at the start of the walk, from the first on. Reads it
// once, in pieces, so that the memory needed does not depend on the file's length.
class EntryScan {
 public:
  explicit EntryScan(File& file) : file_(file), count_(EntryCount(file)) {}

  // Goes to the next entry; false when there is none. Throws RuntimeError.
  bool Next();

  EntryNumber Number() const { return number_; }

  // The entry's text, kTextSize bytes; valid until the next call of Next.
  std::string_view Text() const;

 private:
  File& file_;
  EntryNumber count_;
  EntryNumber number_ = 0;
  EntryNumber pieceStart_ = 1;  // the number of the first entry in the piece
  std::vector<char> piece_;     // whole records
};

}  // namespace tarvo
