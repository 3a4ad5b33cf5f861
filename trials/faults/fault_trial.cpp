#include "fault_trial.h"

#include <gmock/gmock.h>

#include "base/runtime_error.h"
#include "trial.h"

namespace tarvo::test {
namespace {

using ::testing::AnyOf;

std::string TextOf(const Fault& fault) {
  static constexpr const char* kNames[] = {"no space", "I/O error", "refused", "short write"};
  std::string text = kNames[static_cast<std::size_t>(fault.kind)];
  if (fault.kind == FaultKind::kShortWrite) {
    text += " of " + std::to_string(fault.sixteenths) + "/16";
  }
  text += fault.IsEverAfter() ? " ever after" : " " + std::to_string(fault.length) + " in a row";
  return text + " from operation " + std::to_string(fault.number);
}

// How much of its bytes a short write still writes.
const std::vector<std::size_t>& PartsOf(FaultKind kind) {
  static const std::vector<std::size_t> one{8};
  static const std::vector<std::size_t> several{0, 1, 8, 16};
  return kind == FaultKind::kShortWrite && IsFullTrial() ? several : one;
}

int FailedParts() {
  return ::testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count();
}

}  // namespace

FaultTrial::Outcome FaultTrial::TryFault(const FileTree& start, const Fault& fault) {
  Restore(start);
  FailingPlatform failing(system);
  Prepare(failing);
  failing.Fail(fault);
  bool isError = false;
  try {
    Work();
  } catch (const RuntimeError& error) {
    isError = true;
    EXPECT_TRUE(MayRaise(failing)) << "raises " << error.Description();
    // That of the fault, or what comes of a folder that could not be looked at and is taken for
    // missing: it is made once more, or not entered.
    EXPECT_THAT(error.Number(), AnyOf(ErrorOf(fault.kind), kPathFileAccessError, kPathNotFound))
        << error.Description();
  } catch (const std::exception& error) {
    ADD_FAILURE() << error.what();
    isError = true;
  }
  failing.Heal();
  if (failing.FailedOperation().empty()) return Outcome::kNotReached;
  SCOPED_TRACE(failing.FailedOperation());
  hasLostFolder = fault.length > 1 && failing.HasFailed("ChangeCurrentFolder");
  CheckAfterFault(Everything(), failing, fault);
  system.BeginRun();
  system.PassSeconds(60);  // a lock that was left behind is stale by then
  try {
    CheckNextWork(!isError);
  } catch (const std::exception& error) {
    ADD_FAILURE() << "the next time: " << error.what();
  }
  return isError ? Outcome::kError : Outcome::kSilent;
}

void FaultTrial::TryEveryFault(std::string_view figure, const FileTree& start, int stride) {
  constexpr int kMostOperations = 100'000;
  constexpr long long kEnoughDamage = 5;
  Count count;
  for (const FaultKind kind : kFaultKinds) {
    for (const std::size_t part : PartsOf(kind)) {
      for (const int length : {1, 3, Fault::kEverAfter}) {
        Fault fault{kind, 1, length, part};
        while (fault.number < kMostOperations && count.damaged < kEnoughDamage) {
          if (!TryCounted(start, fault, count)) break;
          fault.number += Rounds(stride, 1);
        }
        count.operations = std::max(count.operations, fault.number - 1);
      }
    }
  }
  EXPECT_LT(count.operations, kMostOperations) << "the work has no end";
  TellFigure(figure, Counted(count.faults) + " faults at up to " + Counted(count.operations) +
                         " operations, " + Counted(count.errors) +
                         " of them raised the error that ends the program, " +
                         Counted(count.damaged) + " with damage");
}

// False when the work was done before it came to the fault.
bool FaultTrial::TryCounted(const FileTree& start, const Fault& fault, Count& count) {
  SCOPED_TRACE(TextOf(fault));
  const int before = FailedParts();
  const Outcome outcome = TryFault(start, fault);
  if (FailedParts() > before) ++count.damaged;
  if (outcome == Outcome::kNotReached) return false;
  ++count.faults;
  if (outcome == Outcome::kError) ++count.errors;
  return true;
}

}  // namespace tarvo::test
