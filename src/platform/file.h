#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tarvo {

// An open file, read and written at offsets in bytes; closed when the object is destroyed. No lock
// of the operating system is taken. Every function throws a RuntimeError (57 device I/O, 61 disk
// full, ...).
class File {
 public:
  virtual ~File() = default;

  // The length in bytes at this moment.
  virtual std::uint64_t Size() = 0;

  // Fills the room with the bytes from `offset` on, and gives how many they are: fewer than there
  // is room for only where the file ends.
  virtual std::size_t ReadInto(std::uint64_t offset, std::span<char> room) = 0;

  // Up to `count` bytes from `offset`; fewer only where the file ends.
  std::string ReadAt(std::uint64_t offset, std::size_t count) {
    std::string bytes(count, '\0');
    bytes.resize(ReadInto(offset, bytes));
    return bytes;
  }

  // Writes all the bytes at `offset`; the file grows as needed, a gap reads as zeros. When it
  // throws, a part may have been written.
  virtual void WriteAt(std::uint64_t offset, std::string_view bytes) = 0;

  // Writes all the bytes at the end of the file, and gives the offset at which they begin. Where
  // the system can, finding the end and writing there are one step, so that two programs that
  // append at the same time get places of their own. When it throws, a part may have been written.
  virtual std::uint64_t Append(std::string_view bytes) {
    const std::uint64_t end = Size();
    WriteAt(end, bytes);
    return end;
  }
};

enum class OpenFor {
  kReading,            // the file must exist
  kReadingAndWriting,  // an existing file is kept as it is, a missing one is made empty
};

// What a file is made for.
enum class FileUse {
  kData,
  kProgram,  // it may be executed by all who may read it
};

}  // namespace tarvo
