#include "settings/records.h"

#include <algorithm>

#include "base/numbers.h"

namespace tarvo {
namespace {

// A piece of 64 KB is large enough to make the calls cheap and stays in the processor's cache.
constexpr EntryNumber kEntriesInPiece = 31;

constexpr std::size_t kPageSize = 4096;  // the smallest in use; larger ones are multiples of it

// How much of a record's text lies on the page on which the record begins.
std::size_t TextOnFirstPage(RecordNumber record) {
  const std::size_t onFirst = kPageSize - OffsetOfRecord(record) % kPageSize;
  return std::min(onFirst - std::min(onFirst, kLengthSize), kTextSize);
}

// Whether a record's text means the same whatever it holds from `place` on.
bool EndsBefore(std::string_view text, std::size_t place) {
  const auto hasNul = [](std::string_view part) { return part.find('\0') != part.npos; };
  const bool isFree = place > 0 && text[0] == '\0';
  return isFree || (place > kFieldSize && hasNul(text.substr(kFieldSize, place - kFieldSize)));
}

}  // namespace

std::string PadWithNuls(std::string text, std::size_t length) {
  if (text.size() < length) text.resize(length, '\0');
  return text;
}

std::string ReadRecord(File& file, RecordNumber record) {
  return PadWithNuls(file.ReadAt(OffsetOfRecord(record) + kLengthSize, kTextSize), kTextSize);
}

void WriteRecord(File& file, RecordNumber record, std::string_view text) {
  file.WriteAt(OffsetOfRecord(record), std::string(kLengthBytes).append(text));
}

RecordNumber AppendRecord(File& file, std::string_view text) {
  const std::uint64_t offset = file.Append(std::string(kLengthBytes).append(text));
  return static_cast<RecordNumber>(offset / kRecordSize) + 1;
}

void ReplaceRecord(File& file, RecordNumber record, std::string_view old, std::string_view text) {
  const std::size_t cut = TextOnFirstPage(record);
  if (old.substr(cut) != text.substr(cut) && EndsBefore(old, cut)) {
    WriteRecord(file, record, std::string(old.substr(0, cut)).append(text.substr(cut)));
  }
  WriteRecord(file, record, text);
}

void ClearRecord(File& file, RecordNumber record) {
  WriteRecord(file, record, std::string(kTextSize, '\0'));
}

std::string_view FirstField(std::string_view text) { return text.substr(0, kFieldSize); }

std::string_view SecondField(std::string_view text) { return text.substr(kFieldSize); }

EntryNumber EntryCount(File& file) {
  const double records = static_cast<double>(file.Size()) / kRecordSize;
  return std::max<EntryNumber>(0, static_cast<EntryNumber>(RoundHalfToEven(records - 1)));
}

bool EntryScan::Next() {
  if (number_ == count_) return false;
  ++number_;
  const auto inPiece = static_cast<EntryNumber>(piece_.size() / kRecordSize);
  if (number_ < pieceStart_ + inPiece) return true;
  pieceStart_ = number_;
  const EntryNumber next = std::min(kEntriesInPiece, count_ - number_ + 1);
  piece_.resize(static_cast<std::size_t>(next) * kRecordSize);
  const std::size_t size = file_.ReadInto(OffsetOfRecord(RecordOfEntry(number_)), piece_);
  std::fill(piece_.begin() + static_cast<std::ptrdiff_t>(size), piece_.end(), '\0');
  return true;
}

std::string_view EntryScan::Text() const {
  const auto index = static_cast<std::size_t>(number_ - pieceStart_);
  return {piece_.data() + index * kRecordSize + kLengthSize, kTextSize};
}

}  // namespace tarvo
