#pragma once

#include <cstddef>
#include <cstdint>

namespace tarvo {

// The parts of a zip archive, as far as packages use them. Numbers are little-endian. From the
// front to the back of the file:
//
//   for each member: a local header, its name, its extra fields, its packed bytes, and perhaps a
//   descriptor; then the central directory, one entry for each member; then, in large archives, the
//   64-bit end record and its locator; then the end record with the archive's comment.
//
// Positions in the file count from the archive's first byte, which other data may precede.

struct LocalHeader {
  static constexpr std::uint32_t kSignature = 0x04034b50;
  static constexpr std::size_t kFlags = 6;
  static constexpr std::size_t kMethod = 8;
  static constexpr std::size_t kCrc = 14;
  static constexpr std::size_t kPackedSize = 18;
  static constexpr std::size_t kSize = 22;
  static constexpr std::size_t kNameSize = 26;
  static constexpr std::size_t kExtraSize = 28;
  static constexpr std::size_t kBytes = 30;
};

struct CentralEntry {
  static constexpr std::uint32_t kSignature = 0x02014b50;
  static constexpr std::size_t kHost = 5;     // the system that made the entry
  static constexpr std::size_t kVersion = 6;  // of the format, needed to read it, times 10
  static constexpr std::size_t kFlags = 8;
  static constexpr std::size_t kMethod = 10;
  static constexpr std::size_t kCrc = 16;
  static constexpr std::size_t kPackedSize = 20;
  static constexpr std::size_t kSize = 24;
  static constexpr std::size_t kNameSize = 28;
  static constexpr std::size_t kExtraSize = 30;
  static constexpr std::size_t kCommentSize = 32;
  static constexpr std::size_t kDisk = 34;
  static constexpr std::size_t kAttributes = 38;  // high half: the Unix file mode
  static constexpr std::size_t kHeaderOffset = 42;
  static constexpr std::size_t kBytes = 46;
};

struct EndRecord {
  static constexpr std::uint32_t kSignature = 0x06054b50;
  static constexpr std::size_t kDisk = 4;
  static constexpr std::size_t kDirectoryDisk = 6;
  static constexpr std::size_t kEntriesHere = 8;
  static constexpr std::size_t kEntries = 10;
  static constexpr std::size_t kDirectorySize = 12;
  static constexpr std::size_t kDirectoryOffset = 16;
  static constexpr std::size_t kCommentSize = 20;
  static constexpr std::size_t kBytes = 22;
};

struct Zip64Locator {
  static constexpr std::uint32_t kSignature = 0x07064b50;
  static constexpr std::size_t kDisk = 4;
  static constexpr std::size_t kRecordOffset = 8;
  static constexpr std::size_t kDisks = 16;
  static constexpr std::size_t kBytes = 20;
};

struct Zip64EndRecord {
  static constexpr std::uint32_t kSignature = 0x06064b50;
  static constexpr std::size_t kRestSize = 4;  // of what follows this field
  static constexpr std::size_t kRest = 12;
  static constexpr std::size_t kDisk = 16;
  static constexpr std::size_t kDirectoryDisk = 20;
  static constexpr std::size_t kEntriesHere = 24;
  static constexpr std::size_t kEntries = 32;
  static constexpr std::size_t kDirectorySize = 40;
  static constexpr std::size_t kDirectoryOffset = 48;
  static constexpr std::size_t kBytes = 56;
};

// A descriptor is the optional signature, the CRC and both sizes, in 32 or in 64 bits.
inline constexpr std::uint32_t kDescriptorSignature = 0x08074b50;

// A number that does not fit stands in the 64-bit field instead, which these values say.
inline constexpr std::uint32_t kIn64Bits = 0xFFFFFFFF;
inline constexpr std::uint16_t kCountIn64Bits = 0xFFFF;

// Extra fields: identifier and size in 16 bits each, then the bytes.
inline constexpr std::uint16_t kZip64Field = 0x0001;
inline constexpr std::uint16_t kUnicodeNameField = 0x7075;  // version, CRC of the name, UTF-8 name

enum Method : std::uint16_t {
  kStored = 0,
  kDeflated = 8,
};

enum Flag : std::uint16_t {
  kEncrypted = 1,
  kHasDescriptor = 1 << 3,
  kPatch = 1 << 5,
  kStronglyEncrypted = 1 << 6,
  kNameIsUtf8 = 1 << 11,
  kMaskedHeaders = 1 << 13,
};

inline constexpr std::uint8_t kHostUnix = 3;

// Unix file modes.
inline constexpr std::uint32_t kModeKind = 0170000;
inline constexpr std::uint32_t kModeFolder = 0040000;
inline constexpr std::uint32_t kModeFile = 0100000;
inline constexpr std::uint32_t kModeLink = 0120000;

// Attribute of a link made by another system.
inline constexpr std::uint32_t kReparsePoint = 0x400;

}  // namespace tarvo
