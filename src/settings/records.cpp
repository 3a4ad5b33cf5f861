#include "settings/records.h"

#include <algorithm>

#include "base/numbers.h"

namespace tarvo {
namespace {

// A piece of 64 KB is large enough to make the calls cheap and stays in the processor's cache.
constexpr EntryNumber kEntriesInPiece = 31;

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
  const std::size_t size =
      static_cast<std::size_t>(std::min(kEntriesInPiece, count_ - number_ + 1)) * kRecordSize;
  piece_ = PadWithNuls(file_.ReadAt(OffsetOfRecord(RecordOfEntry(number_)), size), size);
  return true;
}

std::string_view EntryScan::Text() const {
  const auto index = static_cast<std::size_t>(number_ - pieceStart_);
  return std::string_view(piece_).substr(index * kRecordSize + kLengthSize, kTextSize);
}

}  // namespace tarvo
