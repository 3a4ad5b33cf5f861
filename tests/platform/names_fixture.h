#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/runtime_error.h"
#include "platform/forwarding_platform.h"
#include "platform/names.h"
#include "support/temporary_folder.h"

namespace tarvo::test {

// Counts the listings and can make them fail.
class CountingPlatform : public ForwardingPlatform {
 public:
  CountingPlatform() : ForwardingPlatform(SystemPlatform()) {}

  std::vector<FolderEntry> Entries(std::string_view folder) override {
    ++listings;
    if (listingFails) throw RuntimeError(kPermissionDenied);
    return ForwardingPlatform::Entries(folder);
  }

  int listings = 0;
  bool listingFails = false;
};

class NamesTest : public ::testing::Test {
 protected:
  std::vector<std::string> Listed(std::string_view pattern, unsigned attributes) {
    std::vector<std::string> names;
    for (const FolderEntry& entry : ListFolder(platform, folder.Path(), pattern, attributes)) {
      names.push_back(entry.name);
    }
    return names;
  }

  const TemporaryFolder folder;
  CountingPlatform platform;
};

using ResolveNameTest = NamesTest;
using ListFolderTest = NamesTest;
using ReadWholeFileTest = NamesTest;

}  // namespace tarvo::test
