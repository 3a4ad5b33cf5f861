#include "archive/member_reader.h"

#include <algorithm>
#include <cstring>

#include "archive/bytes.h"
#include "archive/extra_fields.h"
#include "archive/invalid_package.h"
#include "archive/zip_layout.h"

namespace tarvo {

// The reading of one member.
class MemberReader::Run {
 public:
  Run(FileWindow& file, Inflater& inflater, const Directory& directory, const Member& member,
      ByteSink& sink)
      : file_(file), inflater_(inflater), directory_(directory), member_(member), sink_(sink) {}

  std::uint64_t Read() {
    const std::uint64_t data = CheckLocalHeader();
    member_.method == kStored ? Copy(data) : Inflate(data);
    if (made_ != member_.size) Refuse("is shorter than it says");
    if (crc_ != member_.crc) Refuse("has a wrong checksum");
    const std::uint64_t end = data + member_.packedSize;
    return (member_.flags & kHasDescriptor) != 0 ? end + DescriptorSize(end) : end;
  }

 private:
  [[noreturn]] void Refuse(std::string_view predicate) const {
    throw InvalidPackage(directory_.PathOf(member_), predicate);
  }

  // Where the member's packed bytes begin.
  std::uint64_t CheckLocalHeader() {
    const std::string_view fixed = file_.At(member_.header, LocalHeader::kBytes);
    if (fixed.size() < LocalHeader::kBytes || Number32(fixed, 0) != LocalHeader::kSignature) {
      Refuse("has no header where the directory says");
    }
    const std::size_t nameSize = Number16(fixed, LocalHeader::kNameSize);
    const std::size_t extraSize = Number16(fixed, LocalHeader::kExtraSize);
    const std::string_view all =
        file_.At(member_.header, LocalHeader::kBytes + nameSize + extraSize);
    if (all.size() < LocalHeader::kBytes + nameSize + extraSize) Refuse("is cut off");
    if (all.substr(LocalHeader::kBytes, nameSize) != directory_.Name(member_.rawName)) {
      Refuse("has another name in its header than in the directory");
    }
    CompareWithDirectory(all.substr(0, LocalHeader::kBytes),
                         all.substr(LocalHeader::kBytes + nameSize));
    const std::uint64_t data = member_.header + all.size();
    if (data > directory_.start || member_.packedSize > directory_.start - data) {
      Refuse("reaches into the package's directory");
    }
    return data;
  }

  void CompareWithDirectory(std::string_view fixed, std::string_view extra) const {
    constexpr std::uint16_t kThatMatter =
        kEncrypted | kHasDescriptor | kPatch | kStronglyEncrypted | kNameIsUtf8 | kMaskedHeaders;
    const std::uint16_t flags = Number16(fixed, LocalHeader::kFlags);
    if (((flags ^ member_.flags) & kThatMatter) != 0) {
      Refuse("has other flags in its header than in the directory");
    }
    if (Number16(fixed, LocalHeader::kMethod) != member_.method) {
      Refuse("has another method in its header than in the directory");
    }
    if (!AreExtraFieldsWhole(extra)) Refuse("has a damaged extra field");
    std::uint64_t size = Number32(fixed, LocalHeader::kSize);
    std::uint64_t packedSize = Number32(fixed, LocalHeader::kPackedSize);
    const std::uint32_t crc = Number32(fixed, LocalHeader::kCrc);
    const bool isLater = (flags & kHasDescriptor) != 0;
    Zip64Numbers large(extra);
    const bool isResolved = large.Resolve(size) && large.Resolve(packedSize);
    if (!isResolved && !isLater) Refuse("lacks its 64-bit sizes");
    // What stands in the descriptor is 0 here, or unknown, or true.
    const auto agree = [isLater](std::uint64_t here, std::uint64_t there) {
      return here == there || (isLater && (here == 0 || here == kIn64Bits));
    };
    if (!agree(size, member_.size) || !agree(packedSize, member_.packedSize)) {
      Refuse("has another size in its header than in the directory");
    }
    if (!agree(crc, member_.crc)) {
      Refuse("has another checksum in its header than in the directory");
    }
  }

  void Copy(std::uint64_t data) {
    while (made_ < member_.size) {
      const std::string_view piece = file_.Piece(data + made_, member_.size - made_);
      if (piece.empty()) Refuse("is cut off");
      const std::span<char> room = sink_.Room();
      const std::size_t count = std::min(piece.size(), room.size());
      std::memcpy(room.data(), piece.data(), count);
      Give(room, count);
    }
  }

  void Inflate(std::uint64_t data) {
    inflater_.Restart();
    std::uint64_t taken = 0;
    for (bool hasEnded = false; !hasEnded;) {
      const std::string_view input = file_.Piece(data + taken, member_.packedSize - taken);
      // Behind the said size there is room for one byte, which must never come.
      char beyond = 0;
      std::span<char> room(&beyond, 1);
      const std::uint64_t missing = member_.size - made_;
      if (missing > 0) {
        room = sink_.Room();
        room = room.first(static_cast<std::size_t>(std::min<std::uint64_t>(room.size(), missing)));
      }
      const Inflater::Step step = inflater_.Run(input, room);
      if (step.isDamaged) Refuse("is damaged and does not inflate");
      if (missing == 0 && step.made > 0) Refuse("is longer than it says");
      if (step.made > 0) Give(room, step.made);
      hasEnded = step.hasEnded;
      if (!hasEnded && step.taken == taken && step.made == 0) {
        Refuse("is damaged and ends too early");
      }
      taken = step.taken;
    }
    if (taken != member_.packedSize) Refuse("has a wrong packed size");
  }

  void Give(std::span<char> room, std::size_t count) {
    crc_ = Crc32(crc_, {room.data(), count});
    made_ += count;
    sink_.Take(count);
  }

  // The bytes of the descriptor at a position, which must say the truth. Its signature is optional,
  // and nothing tells its width: the widest form that fits is taken.
  std::size_t DescriptorSize(std::uint64_t at) {
    constexpr std::size_t kMost = 24;
    const std::uint64_t left = directory_.start - at;
    const std::string_view bytes =
        file_.At(at, static_cast<std::size_t>(std::min<std::uint64_t>(left, kMost)));
    const bool isSigned = bytes.size() >= 4 && Number32(bytes, 0) == kDescriptorSignature;
    const std::size_t starts[] = {4, 0};
    for (const std::size_t start : starts) {
      if (start > 0 && !isSigned) continue;
      const std::string_view rest = bytes.substr(start);
      if (rest.size() >= 20 && Number32(rest, 0) == member_.crc &&
          Number64(rest, 4) == member_.packedSize && Number64(rest, 12) == member_.size) {
        return start + 20;
      }
      if (rest.size() >= 12 && Number32(rest, 0) == member_.crc &&
          Number32(rest, 4) == member_.packedSize && Number32(rest, 8) == member_.size) {
        return start + 12;
      }
    }
    Refuse("has a descriptor that does not agree with the directory");
  }

  FileWindow& file_;
  Inflater& inflater_;
  const Directory& directory_;
  const Member& member_;
  ByteSink& sink_;
  std::uint64_t made_ = 0;
  std::uint32_t crc_ = 0;
};

std::uint64_t MemberReader::Read(const Directory& directory, const Member& member, ByteSink& sink) {
  return Run(file_, inflater_, directory, member, sink).Read();
}

}  // namespace tarvo
