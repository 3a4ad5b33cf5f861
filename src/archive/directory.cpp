#include "archive/directory.h"

#include "archive/bytes.h"
#include "archive/end_record.h"
#include "archive/extra_fields.h"
#include "archive/inflater.h"
#include "archive/invalid_package.h"
#include "archive/member_name.h"
#include "archive/zip_layout.h"
#include "base/text.h"

namespace tarvo {
namespace {

// One entry's bytes in parts.
struct Entry {
  std::string_view fixed;
  std::string_view name;
  std::string_view extra;
  std::size_t size;
};

// The format's version 4.6, times 10: members that need a later one are encrypted, or packed with
// a method that is unknown here.
constexpr unsigned kNewestVersion = 46;

[[noreturn]] void RefuseDirectory() {
  throw InvalidPackage("The package's directory is damaged or cut off.");
}

Entry ReadEntry(FileWindow& file, std::uint64_t at, std::uint64_t end) {
  if (end - at < CentralEntry::kBytes) RefuseDirectory();
  const std::string_view fixed = file.At(at, CentralEntry::kBytes);
  if (fixed.size() < CentralEntry::kBytes || Number32(fixed, 0) != CentralEntry::kSignature) {
    RefuseDirectory();
  }
  const std::size_t nameSize = Number16(fixed, CentralEntry::kNameSize);
  const std::size_t extraSize = Number16(fixed, CentralEntry::kExtraSize);
  const std::size_t size =
      CentralEntry::kBytes + nameSize + extraSize + Number16(fixed, CentralEntry::kCommentSize);
  if (end - at < size) RefuseDirectory();
  const std::string_view all = file.At(at, size);
  if (all.size() < size) RefuseDirectory();
  return {all.substr(0, CentralEntry::kBytes), all.substr(CentralEntry::kBytes, nameSize),
          all.substr(CentralEntry::kBytes + nameSize, extraSize), size};
}

// The UTF-8 name in an extra field, which counts while it belongs to the entry's name.
std::optional<std::string> UnicodeName(const Entry& entry) {
  constexpr std::size_t kHead = 5;
  const auto field = FindExtraField(entry.extra, kUnicodeNameField);
  if (!field || field->size() < kHead || (*field)[0] != 1) return std::nullopt;
  if (Number32(*field, 1) != Crc32(0, entry.name)) return std::nullopt;
  return std::string(field->substr(kHead));
}

// The member's name as text. Archives made on Unix often hold UTF-8 without saying so.
std::string NameText(const Entry& entry) {
  const bool saysUtf8 = (Number16(entry.fixed, CentralEntry::kFlags) & kNameIsUtf8) != 0;
  if (saysUtf8) {
    if (IsUtf8(entry.name)) return std::string(entry.name);
    throw InvalidPackage(ValidUtf8(entry.name), "has a name that is not UTF-8, as it says");
  }
  const std::optional<std::string> unicode = UnicodeName(entry);
  if (unicode && IsUtf8(*unicode)) return *unicode;
  const bool isUnix = static_cast<unsigned char>(entry.fixed[CentralEntry::kHost]) == kHostUnix;
  if (isUnix && IsUtf8(entry.name)) return std::string(entry.name);
  return DecodeCodePage437(entry.name);
}

void RefuseUnreadable(std::string_view name, std::uint16_t flags, std::uint16_t method,
                      unsigned version) {
  if ((flags & (kEncrypted | kStronglyEncrypted | kMaskedHeaders)) != 0) {
    throw InvalidPackage(name, "is encrypted");
  }
  if ((flags & kPatch) != 0 || (method != kStored && method != kDeflated)) {
    throw InvalidPackage(
        name, "is packed with the method " + std::to_string(method) + ", which is unknown here");
  }
  if (version > kNewestVersion) throw InvalidPackage(name, "needs a newer program to unpack it");
}

void RefuseSpecialFiles(std::string_view name, std::uint32_t attributes, bool isFolder) {
  const std::uint32_t kind = attributes >> 16 & kModeKind;
  if (kind == kModeLink || (attributes & kReparsePoint) != 0) {
    throw InvalidPackage(name, "is a link");
  }
  if (kind != 0 && kind != kModeFile && kind != kModeFolder) {
    throw InvalidPackage(name, "is a special file");
  }
  if (kind == kModeFolder && !isFolder) {
    throw InvalidPackage(name, "is a folder under the name of a file");
  }
}

NamePlace Keep(Directory& directory, std::string_view name) {
  if (directory.names.size() + name.size() > kMostNameBytes) {
    throw InvalidPackage("The names in the package are too long altogether.");
  }
  const NamePlace place{static_cast<std::uint32_t>(directory.names.size()),
                        static_cast<std::uint16_t>(name.size())};
  directory.names += name;
  return place;
}

void ReadNumbers(Member& member, const Entry& entry, std::string_view name) {
  member.crc = Number32(entry.fixed, CentralEntry::kCrc);
  member.size = Number32(entry.fixed, CentralEntry::kSize);
  member.packedSize = Number32(entry.fixed, CentralEntry::kPackedSize);
  member.header = Number32(entry.fixed, CentralEntry::kHeaderOffset);
  Zip64Numbers large(entry.extra);
  if (!large.Resolve(member.size) || !large.Resolve(member.packedSize) ||
      !large.Resolve(member.header)) {
    throw InvalidPackage(name, "lacks its 64-bit sizes");
  }
  const std::uint16_t disk = Number16(entry.fixed, CentralEntry::kDisk);
  if (disk != 0 && disk != kCountIn64Bits) throw InvalidPackage(name, "is on another disk");
  if (member.method == kStored && member.packedSize != member.size) {
    throw InvalidPackage(name, "is stored, but its two sizes differ");
  }
  if (member.isFolder && (member.size != 0 || member.crc != 0)) {
    throw InvalidPackage(name, "is a folder, but has content");
  }
}

void AddMember(Directory& directory, const Entry& entry) {
  const std::string name = NameText(entry);
  const MemberPath path = PathOfMember(name);
  Member member;
  member.flags = Number16(entry.fixed, CentralEntry::kFlags);
  member.method = Number16(entry.fixed, CentralEntry::kMethod);
  member.isFolder = path.isFolder;
  RefuseUnreadable(name, member.flags, member.method,
                   static_cast<unsigned char>(entry.fixed[CentralEntry::kVersion]));
  if (!AreExtraFieldsWhole(entry.extra)) throw InvalidPackage(name, "has a damaged extra field");
  RefuseSpecialFiles(name, Number32(entry.fixed, CentralEntry::kAttributes), path.isFolder);
  ReadNumbers(member, entry, name);
  member.rawName = Keep(directory, entry.name);
  // The path mostly is a piece of the name, and then is not kept twice.
  const std::size_t at = std::string_view(entry.name).find(path.path);
  if (at == std::string_view::npos) {
    member.path = Keep(directory, path.path);
  } else {
    member.path = {static_cast<std::uint32_t>(member.rawName.at + at),
                   static_cast<std::uint16_t>(path.path.size())};
  }
  directory.members.push_back(member);
}

// Moves every header by what precedes the archive; each must stand before the directory.
void PlaceHeaders(Directory& directory) {
  std::uint64_t total = 0;
  for (Member& member : directory.members) {
    if (member.size > kMostContent - total) {
      throw InvalidPackage("The package would unpack to more than 4 GiB.");
    }
    total += member.size;
    if (member.header >= directory.start - directory.shift) {
      throw InvalidPackage(directory.PathOf(member), "lies outside the package");
    }
    member.header += directory.shift;
  }
}

}  // namespace

Directory ReadDirectory(FileWindow& file) {
  const DirectoryPlace place = FindDirectory(file);
  if (place.entries > kMostMembers) {
    throw InvalidPackage("The package has more than " + std::to_string(kMostMembers) + " members.");
  }
  if (place.size / CentralEntry::kBytes < place.entries) RefuseDirectory();
  Directory directory;
  directory.start = place.start;
  directory.shift = place.shift;
  directory.members.reserve(place.entries);
  const std::uint64_t end = place.start + place.size;
  std::uint64_t at = place.start;
  for (std::uint64_t i = 0; i < place.entries; ++i) {
    const Entry entry = ReadEntry(file, at, end);
    at += entry.size;
    AddMember(directory, entry);
  }
  if (at != end) throw InvalidPackage("The package's directory is larger than its entries.");
  PlaceHeaders(directory);
  return directory;
}

}  // namespace tarvo
