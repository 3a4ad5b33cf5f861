#include "archive/end_record.h"

#include <algorithm>
#include <optional>

#include "archive/bytes.h"
#include "archive/invalid_package.h"
#include "archive/zip_layout.h"

namespace tarvo {
namespace {

constexpr std::size_t kLongestComment = 0xFFFF;

// What an end record of either form says.
struct End {
  std::uint64_t position;  // where the record stands, and so where the directory ends
  std::uint64_t entries;
  std::uint64_t size;
  std::uint64_t offset;
};

[[noreturn]] void RefuseDisks() {
  throw InvalidPackage("The package is one part of an archive on several disks.");
}

// A record counts only when its comment reaches to the file's end, or to the zeros with which some
// programs fill the last block. A comment that holds another such record could show different
// programs different archives.
std::uint64_t FindEndRecord(FileWindow& file) {
  const std::uint64_t size = file.Size();
  if (size == 0) throw InvalidPackage("The package is empty.");
  const std::size_t tailSize =
      static_cast<std::size_t>(std::min<std::uint64_t>(size, EndRecord::kBytes + kLongestComment));
  const std::string_view tail = file.At(size - tailSize, tailSize);
  const std::size_t contentEnd = tail.find_last_not_of('\0') + 1;
  std::optional<std::uint64_t> found;
  for (std::size_t at = 0; at + EndRecord::kBytes <= tail.size(); ++at) {
    if (tail[at] != 'P' || Number32(tail, at) != EndRecord::kSignature) continue;
    const std::size_t end = at + EndRecord::kBytes + Number16(tail, at + EndRecord::kCommentSize);
    if (end > tail.size() || end < contentEnd) continue;
    if (found) throw InvalidPackage("The package has more than one end record.");
    found = size - tailSize + at;
  }
  if (!found) {
    throw InvalidPackage("The package has no end record: it is cut off or no zip archive.");
  }
  return *found;
}

// The position of the 64-bit record that a locator names. What precedes the archive moves it; then
// it stands right before the locator.
std::uint64_t FindZip64Record(FileWindow& file, std::uint64_t locator) {
  const std::string_view bytes = file.At(locator, Zip64Locator::kBytes);
  const std::uint64_t named = Number64(bytes, Zip64Locator::kRecordOffset);
  const std::uint32_t disks = Number32(bytes, Zip64Locator::kDisks);
  if (Number32(bytes, Zip64Locator::kDisk) != 0 || disks > 1) RefuseDisks();
  const std::uint64_t before = locator - std::min<std::uint64_t>(locator, Zip64EndRecord::kBytes);
  for (const std::uint64_t position : {named, before}) {
    if (position > before) continue;
    const std::string_view record = file.At(position, Zip64EndRecord::kBytes);
    if (record.size() < Zip64EndRecord::kBytes ||
        Number32(record, 0) != Zip64EndRecord::kSignature) {
      continue;
    }
    if (Number64(record, Zip64EndRecord::kRestSize) != locator - position - Zip64EndRecord::kRest) {
      throw InvalidPackage("The package's 64-bit end record has a wrong size.");
    }
    return position;
  }
  throw InvalidPackage("The package has no 64-bit end record where its locator says.");
}

End ReadZip64Record(FileWindow& file, std::uint64_t position) {
  const std::string_view record = file.At(position, Zip64EndRecord::kBytes);
  if (Number32(record, Zip64EndRecord::kDisk) != 0 ||
      Number32(record, Zip64EndRecord::kDirectoryDisk) != 0) {
    RefuseDisks();
  }
  const End end{position, Number64(record, Zip64EndRecord::kEntries),
                Number64(record, Zip64EndRecord::kDirectorySize),
                Number64(record, Zip64EndRecord::kDirectoryOffset)};
  if (Number64(record, Zip64EndRecord::kEntriesHere) != end.entries) RefuseDisks();
  return end;
}

bool Agree(std::uint64_t small, std::uint64_t large, std::uint64_t isLarge) {
  return small == isLarge || small == large;
}

// The record at `position`, or its 64-bit form when a locator stands before it.
End ReadEnd(FileWindow& file, std::uint64_t position) {
  const std::string_view record = file.At(position, EndRecord::kBytes);
  const std::uint16_t disk = Number16(record, EndRecord::kDisk);
  const std::uint16_t directoryDisk = Number16(record, EndRecord::kDirectoryDisk);
  const std::uint16_t entriesHere = Number16(record, EndRecord::kEntriesHere);
  const End end{position, Number16(record, EndRecord::kEntries),
                Number32(record, EndRecord::kDirectorySize),
                Number32(record, EndRecord::kDirectoryOffset)};
  if (entriesHere != end.entries) RefuseDisks();
  const std::uint64_t locator = position - std::min<std::uint64_t>(position, Zip64Locator::kBytes);
  if (position < Zip64Locator::kBytes ||
      Number32(file.At(locator, Zip64Locator::kBytes), 0) != Zip64Locator::kSignature) {
    if (disk != 0 || directoryDisk != 0) RefuseDisks();
    return end;
  }
  if (!Agree(disk, 0, kCountIn64Bits) || !Agree(directoryDisk, 0, kCountIn64Bits)) RefuseDisks();
  const End large = ReadZip64Record(file, FindZip64Record(file, locator));
  if (!Agree(end.entries, large.entries, kCountIn64Bits) ||
      !Agree(end.size, large.size, kIn64Bits) || !Agree(end.offset, large.offset, kIn64Bits)) {
    throw InvalidPackage("The package's two end records contradict each other.");
  }
  return large;
}

}  // namespace

DirectoryPlace FindDirectory(FileWindow& file) {
  const End end = ReadEnd(file, FindEndRecord(file));
  if (end.size > end.position || end.offset > end.position - end.size) {
    throw InvalidPackage("The package's end record places the directory outside the file.");
  }
  const std::uint64_t start = end.position - end.size;
  return {start, end.size, end.entries, start - end.offset};
}

}  // namespace tarvo
