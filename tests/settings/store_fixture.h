#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "base/runtime_error.h"
#include "settings/registry_replacement.h"
#include "support/hand_moved_platform.h"
#include "support/temporary_folder.h"

namespace tarvo::test {

// A platform whose files can be watched and disturbed, and whose clock ends a wait without end.
class WatchedPlatform : public HandMovedPlatform {
 public:
  std::function<void(std::string_view path)> beforeOpening = [](auto) {};
  std::function<void(std::string_view path)> beforeMakingFolder = [](auto) {};
  std::function<void(std::uint64_t offset, std::size_t count)> beforeReading = [](auto, auto) {};
  std::function<void(std::uint64_t offset, std::string_view bytes)> beforeWriting = [](auto, auto) {
  };
  std::function<void()> atReadingNow = [] {};
  int openFiles = 0;
  int readingsOfClock = 0;

  std::unique_ptr<File> OpenFile(std::string_view path, OpenFor use) override;
  void MakeFolder(std::string_view path) override;
  double Now() override;
  double SecondsSinceMidnight() override;
};

// Bytes of records, written down independently of the program's own constants.
inline constexpr std::size_t kRecord = 2050;
std::string RecordBytes(std::string_view firstField, std::string_view secondField);
inline std::string EmptyRecordBytes() { return RecordBytes("", ""); }
// The first and the second field of record `number` (from 1), cut at the first NUL.
std::string FirstFieldOf(std::string_view file, std::size_t number);
std::string SecondFieldOf(std::string_view file, std::size_t number);

// A store with a data file of its own.
class StoreTest : public testing::Test {
 protected:
  StoreTest() { store.SetRegistryDataFile(Path()); }

  std::string Path() const { return folder / "localregistry.dat"; }
  std::string Bytes() const { return ReadFileAt(Path()); }
  std::size_t Records() const { return Bytes().size() / kRecord; }
  // Makes the file anew.
  void WriteBytes(std::string_view bytes) const;
  // Writes over the start of the file, as another program does while the store works on it.
  void WriteInPlace(std::string_view bytes) const;

  TemporaryFolder folder;
  WatchedPlatform platform;
  RegistryReplacement store{platform};
};

// The classic number of the error that an action raises; 0 for none.
template <class Action>
int ErrorOf(Action action) {
  try {
    action();
    return 0;
  } catch (const RuntimeError& error) {
    return error.Number();
  }
}

}  // namespace tarvo::test
