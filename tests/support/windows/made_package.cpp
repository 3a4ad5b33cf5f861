#include "support/made_package.h"

#include <cstdint>

namespace tarvo::test {
namespace {

void Append(std::string& bytes, std::uint32_t value, int size) {
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xFF);
}

std::uint32_t Crc32(const std::string& bytes) {
  constexpr std::uint32_t kPolynomial = 0xEDB88320;
  std::uint32_t crc = 0xFFFFFFFF;
  for (const char byte : bytes) {
    crc ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit) crc = (crc & 1) != 0 ? crc >> 1 ^ kPolynomial : crc >> 1;
  }
  return ~crc;
}

// What the header before a member and its entry in the directory have in common.
std::string MemberFields(const std::string& name, const std::string& content) {
  constexpr std::uint32_t kUtf8Names = 0x800;
  std::string fields;
  Append(fields, 20, 2);  // the version of the format
  Append(fields, kUtf8Names, 2);
  Append(fields, 0, 2);           // stored
  Append(fields, 0x58210000, 4);  // a date
  Append(fields, Crc32(content), 4);
  Append(fields, static_cast<std::uint32_t>(content.size()), 4);
  Append(fields, static_cast<std::uint32_t>(content.size()), 4);
  Append(fields, static_cast<std::uint32_t>(name.size()), 2);
  Append(fields, 0, 2);  // no extra fields
  return fields;
}

}  // namespace

std::string MakePackage(const TemporaryFolder& folder, const std::string& package,
                        const PackageFiles& files) {
  std::string bytes;
  std::string directory;
  for (const auto& [name, content] : files) {
    const std::string fields = MemberFields(name, content);
    directory += "PK\x01\x02";
    Append(directory, 20, 2);
    directory += fields;
    Append(directory, 0, 2);  // no comment
    Append(directory, 0, 2);  // the first disk
    Append(directory, 0, 2);  // inner attributes
    Append(directory, 0, 4);  // outer attributes
    Append(directory, static_cast<std::uint32_t>(bytes.size()), 4);
    directory += name;
    bytes += "PK\x03\x04" + fields + name + content;
  }
  const auto start = static_cast<std::uint32_t>(bytes.size());
  const auto count = static_cast<std::uint32_t>(files.size());
  bytes += directory + "PK\x05\x06";
  Append(bytes, 0, 4);
  Append(bytes, count, 2);
  Append(bytes, count, 2);
  Append(bytes, static_cast<std::uint32_t>(directory.size()), 4);
  Append(bytes, start, 4);
  Append(bytes, 0, 2);
  return folder.WriteFile(package, bytes);
}

}  // namespace tarvo::test
