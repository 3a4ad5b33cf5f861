#pragma once

#include "archive/byte_sink.h"
#include "archive/directory.h"
#include "archive/file_window.h"
#include "archive/inflater.h"

namespace tarvo {

// Reads members' contents and verifies all that is said of them.
class MemberReader {
 public:
  explicit MemberReader(FileWindow& file) : file_(file) {}

  // Hands a member's content to the sink and gives the position where what belongs to the member
  // ends in the file. Throws InvalidPackage when the local header does not agree with the
  // directory, when the bytes do not inflate, and when their CRC or either size is not as said; no
  // more than the said size is ever handed over.
  std::uint64_t Read(const Directory& directory, const Member& member, ByteSink& sink);

 private:
  class Run;

  FileWindow& file_;
  Inflater inflater_;
};

}  // namespace tarvo
