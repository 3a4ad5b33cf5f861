#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "archive/file_window.h"

namespace tarvo {

// How many members, and how many folders, a package may have at most, and how many bytes their
// names may take together: what is known of them stays in memory.
inline constexpr std::uint64_t kMostMembers = 131072;
inline constexpr std::uint64_t kMostFolders = 131072;
inline constexpr std::size_t kMostNameBytes = std::size_t{4} * 1024 * 1024;

// The most that a package may unpack to, in bytes.
inline constexpr std::uint64_t kMostContent = std::uint64_t{4} * 1024 * 1024 * 1024;

// A piece of the directory's names.
struct NamePlace {
  std::uint32_t at = 0;
  std::uint16_t size = 0;
};

// What the central directory says of one member.
struct Member {
  static constexpr std::uint64_t kNotKept = ~std::uint64_t{0};

  NamePlace path;     // below the driver's folder, with "/" between names
  NamePlace rawName;  // the name's bytes, as the local header must have them too
  std::uint32_t crc = 0;
  std::uint16_t flags = 0;
  std::uint16_t method = 0;
  bool isFolder = false;
  bool isVerified = false;
  std::uint64_t packedSize = 0;
  std::uint64_t size = 0;
  std::uint64_t header = 0;          // where its local header stands in the file
  std::uint64_t end = 0;             // where what belongs to it ends, once it is verified
  std::uint64_t content = kNotKept;  // where its verified content is kept
};

// A package's central directory: every member in the order of the directory.
struct Directory {
  std::vector<Member> members;
  std::string names;
  std::uint64_t start = 0;  // where it stands in the file: all members lie before it
  std::uint64_t shift = 0;  // see DirectoryPlace

  std::string_view Name(NamePlace place) const {
    return std::string_view(names).substr(place.at, place.size);
  }
  std::string_view PathOf(const Member& member) const { return Name(member.path); }
};

// Reads the central directory. Throws InvalidPackage when it is damaged, when it lists what no
// package may hold (encrypted members, links, special files, unknown methods, forbidden names), and
// when there is too much of it.
Directory ReadDirectory(FileWindow& file);

}  // namespace tarvo
