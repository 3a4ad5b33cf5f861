#pragma once

#include <string_view>

#include "failing_platform.h"
#include "sites/field_site.h"

namespace tarvo::test {

// Work of the program at a technician's site that is done over and over, each time with another
// operation failing in another way, until every operation has failed. A trial says what the work
// is, what must hold after a fault and what the next, undisturbed work must leave.
class FaultTrial : public FieldSite {
 protected:
  // Makes a run ready up to where the work begins; nothing fails yet.
  virtual void Prepare(FailingPlatform& failing) = 0;
  virtual void Work() = 0;

  // Whether the work may raise an error because of what has failed; an error ends the program with
  // the standard message.
  virtual bool MayRaise(const FailingPlatform& failing) const = 0;

  virtual void CheckAfterFault(const FileTree& found, const FailingPlatform& failing,
                               const Fault& fault) = 0;

  // Does the work again, with nothing failing: in the same run when that has not ended by an error,
  // else in a new one.
  virtual void CheckNextWork(bool isSameRun) = 0;

  // Tries all faults from a state of the site and tells the figure. The quick form leaves most
  // operations out: it takes every `stride`-th.
  void TryEveryFault(std::string_view figure, const FileTree& start, int stride);

  // Whether the run could not go back to a folder for as long as it was disturbed.
  bool hasLostFolder = false;

 private:
  enum class Outcome { kNotReached, kSilent, kError };

  struct Count {
    long long faults = 0;
    long long errors = 0;
    long long damaged = 0;
    int operations = 0;
  };

  bool TryCounted(const FileTree& start, const Fault& fault, Count& count);
  Outcome TryFault(const FileTree& start, const Fault& fault);
};

}  // namespace tarvo::test
