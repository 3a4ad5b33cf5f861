#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tarvo {

// The settings file is a sequence of records of one size, numbered from 1:
//
//   offset  size
//        0     2   the length of the text that follows, little-endian: always 2048 (bytes 00 08)
//        2  1024   first field   \  text in the system's single-byte code page, one byte for each
//     1026  1024   second field  /  character, padded with NUL bytes
//
// A field's value ends before its first NUL; one without a NUL has all 1024 characters. A record
// whose first text byte is NUL is empty.
//
// Record 1 is the lock: the owner's identity and the time at which the lock was taken; an empty
// record when nobody holds it. Records 2, 3, ... are the entries 1, 2, ...: a key and up to 1024
// characters of its value. A longer value goes on under the keys K~2, K~3, ...; there is no K~1.
//
// A deleted entry is an empty record, and the first empty record takes the next new entry; the file
// never shrinks. docs/settings-file.md shows all this in pictures.
inline constexpr std::string_view kDataFileName = "localregistry.dat";

inline constexpr std::size_t kLengthSize = 2;
inline constexpr std::size_t kFieldSize = 1024;
inline constexpr std::size_t kTextSize = 2 * kFieldSize;
inline constexpr std::size_t kRecordSize = kLengthSize + kTextSize;
inline constexpr std::string_view kLengthBytes{"\x00\x08", kLengthSize};

// A record's number in the file, counted from 1, and an entry's number, counted from 1 as well; the
// entry number 0 stands for an entry that is not in the file.
using RecordNumber = std::int64_t;
using EntryNumber = std::int64_t;
inline constexpr RecordNumber kLockRecord = 1;
constexpr RecordNumber RecordOfEntry(EntryNumber entry) { return entry + 1; }
constexpr std::uint64_t OffsetOfRecord(RecordNumber record) {
  return static_cast<std::uint64_t>(record - 1) * kRecordSize;
}

inline constexpr std::size_t kLongestKey = 1000;  // in characters of the code page
inline constexpr char kContinuationSign = '~';    // stands in no key of a caller

}  // namespace tarvo
