#include "archive/file_window.h"

#include <algorithm>

namespace tarvo {

FileWindow::FileWindow(std::unique_ptr<File> file)
    : file_(std::move(file)),
      size_(file_->Size()),
      buffer_(std::make_unique_for_overwrite<char[]>(
          static_cast<std::size_t>(std::min<std::uint64_t>(size_, kBytes)))) {}

bool FileWindow::Holds(std::uint64_t offset, std::size_t count) const {
  return offset >= start_ && offset - start_ <= held_ && held_ - (offset - start_) >= count;
}

void FileWindow::Fill(std::uint64_t offset, std::size_t wanted) {
  // A small file is read once and whole.
  const bool isSmall = size_ <= kBytes;
  start_ = isSmall ? 0 : offset;
  const std::uint64_t rest = size_ - std::min(size_, start_);
  const std::size_t most = isSmall ? kBytes : std::clamp(wanted, kPiece, kBytes);
  held_ = 0;  // also when this fails
  held_ = file_->ReadInto(
      start_, {buffer_.get(), static_cast<std::size_t>(std::min<std::uint64_t>(rest, most))});
}

std::string_view FileWindow::From(std::uint64_t offset) const {
  return std::string_view(buffer_.get(), held_)
      .substr(static_cast<std::size_t>(std::min<std::uint64_t>(offset - start_, held_)));
}

std::string_view FileWindow::At(std::uint64_t offset, std::size_t count) {
  if (!Holds(offset, count)) Fill(offset, count);
  return From(offset).substr(0, count);
}

std::string_view FileWindow::Piece(std::uint64_t offset, std::uint64_t most) {
  if (most == 0) return {};
  if (!Holds(offset, 1)) Fill(offset, kPiece);
  const std::string_view rest = From(offset);
  return rest.substr(0, static_cast<std::size_t>(std::min<std::uint64_t>(most, rest.size())));
}

}  // namespace tarvo
