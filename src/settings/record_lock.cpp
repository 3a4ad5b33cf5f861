#include "settings/record_lock.h"

#include <cmath>

#include "base/numbers.h"
#include "base/text.h"
#include "settings/records.h"
#include "settings/trace.h"

namespace tarvo {
namespace {

constexpr double kSecondsPerDay = 86400;
constexpr double kPatience = 5;           // seconds between two looks at the lock's age
constexpr double kAgeUnitsPerDay = 1e5;   // the unit in which a lock's age is measured
constexpr double kOldestLivingLock = 60;  // in these units

bool IsStale(double taken, double now) {
  return std::floor(now) != std::floor(taken) ||
         (now - taken) * kAgeUnitsPerDay > kOldestLivingLock;
}

}  // namespace

RecordLock::RecordLock(Platform& platform) : platform_(platform), ownerId_(MakeOwnerId()) {}

std::string RecordLock::MakeOwnerId() const {
  const auto hundredths = static_cast<float>(platform_.SecondsSinceMidnight() * 100);
  return platform_.EncodeCodePage(SingleText(hundredths, platform_.DecimalSeparator()));
}

std::string RecordLock::LockText() const {
  const std::string time = NumberText(platform_.Now(), platform_.DecimalSeparator());
  return PadWithNuls(ownerId_, kFieldSize) +
         PadWithNuls(platform_.EncodeCodePage(time), kFieldSize);
}

double RecordLock::SecondsPassedSince(double start) const {
  const double passed = platform_.SecondsSinceMidnight() - start;
  return passed < 0 ? passed + kSecondsPerDay : passed;
}

void RecordLock::TakeLock(File& file) {
  const std::string lockText = LockText();
  double start = platform_.SecondsSinceMidnight();
  bool isWritten = false;
  bool waitsForNamesakes = true;
  std::string lock;
  // What has this owner's identity is its own if it has written it now, or has failed to release it
  // the last time.
  const auto isNamesakes = [&] { return lock != (isWritten ? lockText : taken_); };
  do {
    if (SecondsPassedSince(start) > kPatience) {
      ClearStaleLock(file);
      start = platform_.SecondsSinceMidnight();
      waitsForNamesakes = false;
    }
    if (CutAtNul(ReadRecord(file, kLockRecord)).empty()) {
      WriteRecord(file, kLockRecord, lockText);
      isWritten = true;
    }
    lock = ReadRecord(file, kLockRecord);
  } while (CutAtNul(lock) != ownerId_ || (waitsForNamesakes && isNamesakes()));
  taken_ = lock;
}

bool RecordLock::IsHeld(File& file) const { return ReadRecord(file, kLockRecord) == taken_; }

void RecordLock::ReleaseLock(File& file) {
  const std::string lock = ReadRecord(file, kLockRecord);
  if (FirstField(lock) == PadWithNuls(ownerId_, kFieldSize)) {
    ClearRecord(file, kLockRecord);
  } else {
    Trace("lock not ours!");
  }
}

void RecordLock::ClearStaleLock(File& file) {
  const std::string lock = ReadRecord(file, kLockRecord);
  const std::string_view time = CutAtNul(SecondField(lock));
  if (time.empty() || !IsStale(LeadingNumber(time), platform_.Now())) return;
  ClearRecord(file, kLockRecord);
  Trace("Stale lock cleared!");
}

}  // namespace tarvo
