#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "archive/package.h"
#include "support/temporary_folder.h"

namespace tarvo::test {

// A member as it will stand in an archive; a test changes what is to be wrong. What is not set is
// as the content demands.
struct MadeMember {
  std::string name;
  std::string content;
  bool isDeflated = false;
  std::uint16_t flags = 0;
  std::uint32_t attributes = 0;
  std::uint8_t host = 0;
  std::uint8_t version = 20;  // needed to unpack it, times 10
  std::string extra{};        // in the directory
  std::string localExtra{};
  std::optional<std::uint16_t> method{};
  std::optional<std::uint32_t> crc{};
  std::optional<std::uint32_t> size{};
  std::optional<std::uint32_t> packedSize{};
  std::optional<std::uint32_t> headerOffset{};
  std::optional<std::string> localName{};
  std::optional<std::uint32_t> localSize{};
  std::optional<std::uint32_t> localCrc{};
  std::optional<std::uint16_t> localMethod{};
  std::string descriptor{};  // stands behind the content
};

// The bytes of an archive with these members.
std::string ArchiveOf(const std::vector<MadeMember>& members, std::string_view comment = {},
                      int entriesMore = 0);

// An extra field.
std::string ExtraField(std::uint16_t identifier, std::string_view content);

// A descriptor for a content, in 32 or in 64 bits.
std::string DescriptorOf(const MadeMember& member, bool isSigned, bool isLarge);

std::string Deflated(std::string_view content);

void Append(std::string& bytes, std::uint64_t value, int size);

// The smallest driver: its description and a tool.
std::vector<MadeMember> SmallDriver();

// Every file and folder below a folder, by its path; folders have the content "<folder>".
std::map<std::string, std::string> TreeOf(const std::string& folder);

// Packages in a folder of their own.
class Packages : public ::testing::Test {
 protected:
  // What the check says of an archive; "" when it is valid.
  std::string FaultOf(std::string_view bytes, PackageKind kind = PackageKind::kDriver) {
    folder.WriteFile("package.drv", bytes);
    const auto fault = Package(SystemPlatform(), folder / "package.drv", kind).Check();
    return fault ? fault->sentence : "";
  }
  // The same with a driver to which a member is added.
  std::string FaultWith(const MadeMember& member) {
    auto members = SmallDriver();
    members.push_back(member);
    return FaultOf(ArchiveOf(members));
  }

  // Checks an archive and unpacks it into "target".
  void Install(std::string_view bytes, Platform& platform = SystemPlatform()) {
    folder.WriteFile("package.drv", bytes);
    Package package(platform, folder / "package.drv");
    const auto fault = package.Check();
    ASSERT_FALSE(fault) << fault->sentence;
    package.Unpack(folder / "target");
  }

  TemporaryFolder folder;
};

}  // namespace tarvo::test
