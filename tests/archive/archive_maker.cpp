#include "archive_maker.h"

#include <zlib.h>

#include <filesystem>
#include <stdexcept>

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

std::uint32_t CrcOf(std::string_view bytes) {
  return static_cast<std::uint32_t>(
      ::crc32_z(0, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
}

std::string PackedOf(const MadeMember& member) {
  return member.isDeflated ? Deflated(member.content) : member.content;
}

// From the flags to the sizes, which both headers have alike.
void AppendCommon(std::string& bytes, const MadeMember& member, std::string_view packed,
                  bool isLocal) {
  const bool isLater = isLocal && !member.descriptor.empty();
  const std::uint16_t method = member.method.value_or(member.isDeflated ? 8 : 0);
  const std::uint32_t crc = member.crc.value_or(CrcOf(member.content));
  const auto size = member.size.value_or(static_cast<std::uint32_t>(member.content.size()));
  Append(bytes, member.flags | (member.descriptor.empty() ? 0 : 8), 2);
  Append(bytes, isLocal ? member.localMethod.value_or(method) : method, 2);
  Append(bytes, 0, 4);
  Append(bytes, isLater ? 0 : isLocal ? member.localCrc.value_or(crc) : crc, 4);
  const auto packedSize = static_cast<std::uint32_t>(packed.size());
  Append(bytes, isLater ? 0 : member.packedSize.value_or(packedSize), 4);
  Append(bytes, isLater ? 0 : isLocal ? member.localSize.value_or(size) : size, 4);
}

}  // namespace

void Append(std::string& bytes, std::uint64_t value, int size) {
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xFF);
}

std::string Deflated(std::string_view content) {
  z_stream stream{};
  if (::deflateInit2(&stream, 1, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::runtime_error("cannot deflate");
  }
  std::string result(::deflateBound(&stream, content.size()), '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(content.data()));
  stream.avail_in = static_cast<uInt>(content.size());
  stream.next_out = reinterpret_cast<Bytef*>(result.data());
  stream.avail_out = static_cast<uInt>(result.size());
  ::deflate(&stream, Z_FINISH);
  result.resize(stream.total_out);
  ::deflateEnd(&stream);
  return result;
}

std::string ExtraField(std::uint16_t identifier, std::string_view content) {
  std::string bytes;
  Append(bytes, identifier, 2);
  Append(bytes, content.size(), 2);
  return bytes.append(content);
}

std::string DescriptorOf(const MadeMember& member, bool isSigned, bool isLarge) {
  std::string bytes;
  if (isSigned) Append(bytes, 0x08074b50, 4);
  Append(bytes, CrcOf(member.content), 4);
  Append(bytes, PackedOf(member).size(), isLarge ? 8 : 4);
  Append(bytes, member.content.size(), isLarge ? 8 : 4);
  return bytes;
}

std::string ArchiveOf(const std::vector<MadeMember>& members, std::string_view comment,
                      int entriesMore) {
  std::string bytes;
  std::string directory;
  for (const MadeMember& member : members) {
    const std::uint64_t offset =
        member.headerOffset.value_or(static_cast<std::uint32_t>(bytes.size()));
    const std::string localName = member.localName.value_or(member.name);
    const std::string packed = PackedOf(member);
    Append(bytes, 0x04034b50, 4);
    Append(bytes, member.version, 2);
    AppendCommon(bytes, member, packed, true);
    Append(bytes, localName.size(), 2);
    Append(bytes, member.localExtra.size(), 2);
    bytes += localName + member.localExtra + packed + member.descriptor;

    Append(directory, 0x02014b50, 4);
    Append(directory, 20 | member.host << 8, 2);
    Append(directory, member.version, 2);
    AppendCommon(directory, member, packed, false);
    Append(directory, member.name.size(), 2);
    Append(directory, member.extra.size(), 2);
    Append(directory, 0, 6);
    Append(directory, member.attributes, 4);
    Append(directory, offset, 4);
    directory += member.name + member.extra;
  }
  const std::size_t start = bytes.size();
  bytes += directory;
  Append(bytes, 0x06054b50, 4);
  Append(bytes, 0, 4);
  Append(bytes, members.size() + static_cast<std::size_t>(entriesMore), 2);
  Append(bytes, members.size() + static_cast<std::size_t>(entriesMore), 2);
  Append(bytes, directory.size(), 4);
  Append(bytes, start, 4);
  Append(bytes, comment.size(), 2);
  return bytes.append(comment);
}

std::vector<MadeMember> SmallDriver() {
  return {{.name = "driver.inf", .content = "[driver]\r\n"},
          {.name = "Download.EXE", .content = std::string(300, 'x') + "end", .isDeflated = true}};
}

std::map<std::string, std::string> TreeOf(const std::string& folder) {
  std::map<std::string, std::string> tree;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    const std::string name = fs::relative(entry.path(), folder).generic_string();
    tree[name] = entry.is_directory() ? "<folder>" : ReadFileAt(entry.path().string());
  }
  return tree;
}

}  // namespace tarvo::test
