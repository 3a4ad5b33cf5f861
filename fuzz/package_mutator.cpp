// Changes packages for the fuzzer. It cannot guess checksums, sizes and positions; where a change
// has made them wrong, half of the results get true ones, so that what lies behind is reached too.

#include <zlib.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "archive/bytes.h"
#include "archive/zip_layout.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace tarvo::fuzz {
namespace {

class Mending {
 public:
  Mending(std::uint8_t* data, std::size_t size)
      : data_(data), bytes_(reinterpret_cast<const char*>(data), size) {}

  void Run() {
    const std::size_t end = bytes_.rfind("PK\5\6");
    const std::size_t first = bytes_.find("PK\1\2");
    if (end == bytes_.npos || end + EndRecord::kBytes > bytes_.size() || first >= end) return;
    std::size_t header = 0;
    std::uint16_t entries = 0;
    std::size_t at = first;
    while (at + CentralEntry::kBytes <= end && Number32(bytes_, at) == CentralEntry::kSignature) {
      header = bytes_.find("PK\3\4", header);
      if (header == bytes_.npos || header + LocalHeader::kBytes > first) return;
      MendMember(header, at, first);
      at += CentralEntry::kBytes + Number16(bytes_, at + CentralEntry::kNameSize) +
            Number16(bytes_, at + CentralEntry::kExtraSize) +
            Number16(bytes_, at + CentralEntry::kCommentSize);
      header += LocalHeader::kBytes;
      ++entries;
    }
    Put(end + EndRecord::kEntries, entries, 2);
    Put(end + EndRecord::kEntriesHere, entries, 2);
    Put(end + EndRecord::kDirectoryOffset, first, 4);
    Put(end + EndRecord::kDirectorySize, end - first, 4);
  }

 private:
  void Put(std::size_t at, std::uint64_t value, std::size_t size) {
    if (at + size > bytes_.size()) return;
    for (std::size_t i = 0; i < size; ++i)
      data_[at + i] = static_cast<std::uint8_t>(value >> 8 * i);
  }

  // The content reaches to the next header, or to the directory.
  void MendMember(std::size_t header, std::size_t entry, std::size_t directory) {
    const std::size_t start = header + LocalHeader::kBytes +
                              Number16(bytes_, header + LocalHeader::kNameSize) +
                              Number16(bytes_, header + LocalHeader::kExtraSize);
    const std::size_t next = std::min(bytes_.find("PK\3\4", header + 4), directory);
    if (start > next) return;
    std::string_view content = bytes_.substr(start, next - start);
    std::size_t size = content.size();
    std::uint32_t crc = static_cast<std::uint32_t>(::crc32_z(0, data_ + start, size));
    if (Number16(bytes_, entry + CentralEntry::kMethod) == kDeflated) {
      Inflate(start, content, size, crc);
    }
    Put(header + LocalHeader::kCrc, crc, 4);
    Put(header + LocalHeader::kPackedSize, content.size(), 4);
    Put(header + LocalHeader::kSize, size, 4);
    Put(entry + CentralEntry::kCrc, crc, 4);
    Put(entry + CentralEntry::kPackedSize, content.size(), 4);
    Put(entry + CentralEntry::kSize, size, 4);
    Put(entry + CentralEntry::kHeaderOffset, header, 4);
    if (bytes_.substr(next - std::min<std::size_t>(next, 16)).starts_with("PK\7\x8") &&
        next >= start + 16) {
      Put(next - 12, crc, 4);
      Put(next - 8, content.size(), 4);
      Put(next - 4, size, 4);
    }
  }

  void Inflate(std::size_t start, std::string_view& content, std::size_t& size,
               std::uint32_t& crc) {
    static std::vector<Bytef> room(std::size_t{64} * 1024);
    z_stream stream{};
    if (::inflateInit2(&stream, -MAX_WBITS) != Z_OK) return;
    stream.next_in = data_ + start;
    stream.avail_in = static_cast<uInt>(content.size());
    stream.next_out = room.data();
    stream.avail_out = static_cast<uInt>(room.size());
    const int result = ::inflate(&stream, Z_FINISH);
    ::inflateEnd(&stream);
    if (result != Z_STREAM_END) return;
    content = content.substr(0, stream.total_in);
    size = stream.total_out;
    crc = static_cast<std::uint32_t>(::crc32_z(0, room.data(), size));
  }

  std::uint8_t* data_;
  std::string_view bytes_;
};

}  // namespace
}  // namespace tarvo::fuzz

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t most, unsigned seed) {
  size = ::LLVMFuzzerMutate(data, size, most);
  if (seed % 2 == 0) tarvo::fuzz::Mending(data, size).Run();
  return size;
}
