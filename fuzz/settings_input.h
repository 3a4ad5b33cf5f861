#pragma once

#include <string>
#include <string_view>

#include "input.h"
#include "memory_platform.h"

namespace tarvo::fuzz {

// What the input of the settings target is made into: a system, keys and values, records and files.

inline constexpr std::string_view kSettingsFile = "/localregistry.dat";

// A system whose clock goes on each time it is looked at. Another program that holds the lock lets
// go of it when it has been waited for long enough.
class TickingPlatform final : public MemoryPlatform {
 public:
  static constexpr int kPatience = 20;
  // So long that a waiting store looks at the lock's age each time.
  static constexpr double kSecondsPerLook = 6;

  void BeginOperation() { looks_ = 0; }

  double SecondsSinceMidnight() override;

 private:
  int looks_ = 0;
};

// The lock record that nobody holds.
std::string EmptyLock();

// Keys that meet each other in letter case, continuation and length, and any other. The longest are
// rare: looking for them takes as long as all else.
std::string SomeKey(Input& input);

// A short value, with characters that the code page lacks among them.
std::string SomeValue(Input& input);

// Values around the lengths at which they need one more record.
std::string LongValue(Input& input);

// Of the lock record: nobody's, another program's with a time or without, or any record at all.
std::string SomeLock(Input& input, Platform& platform);

// A file of a lock record and some others, whole, cut or with something behind it.
std::string SomeFile(Input& input, Platform& platform);

}  // namespace tarvo::fuzz
