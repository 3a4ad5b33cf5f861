#pragma once

#include <string>

#include "platform/platform.h"

namespace tarvo {

// The lock that programs sharing a settings file keep in its first record. It is a convention: the
// operating system knows nothing of it. Whoever finds the record empty writes its identity there
// and owns the lock when it reads that identity back.
//
// That lets two in at times: when both find the record empty at the same instant, when somebody
// clears a lock as stale that another has just taken, and when two owners have the same identity.
// So whoever owns the lock asks IsHeld right before it writes an entry, and owners with the same
// identity, namesakes, are told apart by the times of their locks.
//
// A lock whose owner has died goes stale: after 60 units of 1/100000 day (51.84 seconds), or when
// the day changes. The time of the lock is written with the locale's decimal sign and read with "."
// only, so under a decimal comma a lock counts as taken at midnight.
//
// Every function throws a RuntimeError when the file fails.
class RecordLock {
 public:
  explicit RecordLock(Platform& platform);

  // Waits for the lock, without pause and without limit. The lock's time is that of the call.
  // Every 5 seconds it looks whether the lock has gone stale. After the first of these looks a
  // namesake's lock is taken for this owner's.
  void TakeLock(File& file);

  // Whether the lock record is still the very one that TakeLock has ended with, its time included.
  bool IsHeld(File& file) const;

  // Empties the lock record if it holds this owner's identity.
  void ReleaseLock(File& file);

  // Empties the lock record if its time is stale. A lock without a time never is.
  void ClearStaleLock(File& file);

 private:
  std::string MakeOwnerId() const;
  std::string LockText() const;
  double SecondsPassedSince(double start) const;

  Platform& platform_;
  std::string ownerId_;  // in the code page
  std::string taken_;    // the text of the lock record when the lock was taken last; "" before
};

}  // namespace tarvo
