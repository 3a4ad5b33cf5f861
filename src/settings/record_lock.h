#pragma once

#include <string>

#include "platform/platform.h"

namespace tarvo {

// The lock that programs sharing a settings file keep in its first record. It is a convention: the
// operating system knows nothing of it. Whoever finds the record empty writes its identity there
// and owns the lock when it reads that identity back.
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
  // Every 5 seconds it looks whether the lock has gone stale.
  void TakeLock(File& file);

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
};

}  // namespace tarvo
