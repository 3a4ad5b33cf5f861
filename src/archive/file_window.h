#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/file.h"

namespace tarvo {

// A file read through one buffer, so that many small reads that follow each other cost few calls
// and a file of any size costs the same memory. Throws what File::ReadInto throws.
class FileWindow {
 public:
  static constexpr std::size_t kBytes = std::size_t{256} * 1024;

  explicit FileWindow(std::unique_ptr<File> file);

  // The file's length when it was opened.
  std::uint64_t Size() const { return size_; }

  // `count` bytes (at most kBytes) from `offset`; fewer only where the file ends. They stay until
  // the next call.
  std::string_view At(std::uint64_t offset, std::size_t count);

  // As many bytes from `offset` as are at hand, at least one and at most `most`; none only where
  // the file ends. They stay until the next call.
  std::string_view Piece(std::uint64_t offset, std::uint64_t most);

 private:
  // What is read at a time: little enough to be still in the processor's cache when it is used.
  static constexpr std::size_t kPiece = std::size_t{64} * 1024;

  bool Holds(std::uint64_t offset, std::size_t count) const;
  // Reads what `wanted` bytes from `offset` stand in, and what is behind them.
  void Fill(std::uint64_t offset, std::size_t wanted);
  std::string_view From(std::uint64_t offset) const;

  std::unique_ptr<File> file_;
  std::uint64_t size_;
  std::unique_ptr<char[]> buffer_;  // of the file's size, or of kBytes
  std::size_t held_ = 0;            // how many bytes the buffer holds
  std::uint64_t start_ = 0;         // where the first of them stands in the file
};

}  // namespace tarvo
