#pragma once

#include <cstdint>

#include "archive/file_window.h"

namespace tarvo {

// Where the central directory lies in the file, as the end record tells.
struct DirectoryPlace {
  std::uint64_t start;    // in the file
  std::uint64_t size;     // in bytes
  std::uint64_t entries;  // how many it holds
  std::uint64_t shift;    // what precedes the archive in the file: to be added to its positions
};

// Finds the end record at the file's end and reads it, with its 64-bit form where there is one.
// Throws InvalidPackage when there is none, or more than one, or when it contradicts itself.
DirectoryPlace FindDirectory(FileWindow& file);

}  // namespace tarvo
