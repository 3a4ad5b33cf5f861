#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <random>

#include "sites/field_site.h"
#include "support/killed_process.h"
#include "support/traced_process.h"
#include "trial.h"

namespace tarvo::test {
namespace {

std::uint_fast32_t Seed() {
  const char* chosen = std::getenv("TARVO_TEST_SEED");
  return chosen ? static_cast<std::uint_fast32_t>(std::strtoul(chosen, nullptr, 10))
                : std::random_device{}();
}

// Work of the program that is killed over and over, at every call that changes the disk and at
// random moments. The next run must find each file whole and complete the work.
class KilledWork : public FieldSite {
 protected:
  virtual void Work() = 0;
  virtual void ExpectWholeFiles(const FileTree& found) = 0;

  // `start` is the state before the work; the state after it is found by doing it.
  void KillEverywhere(std::string_view figure, const FileTree& start) {
    before = start;
    Restore(before);
    Prepare();
    const auto begin = Clock::now();
    Work();
    duration_ = Clock::now() - begin;
    after = Everything();
    ASSERT_TRUE(after != before);
    KillAtCalls(std::string(figure) + ".calls");
    KillAtRandom(std::string(figure) + ".moments");
  }

  std::unique_ptr<SiteRun> run;
  FileTree before;
  FileTree after;

 private:
  using Clock = std::chrono::steady_clock;

  void Prepare() {
    run.reset();
    run = StartedRun();
  }

  // Looks at what a killed run has left behind and lets the next one do the work. False when
  // anything is wrong.
  bool Survives() {
    const FileTree found = Everything();
    ExpectWholeFiles(found);
    isHalfDone_ = found != before && found != after;
    Restore(found);
    Prepare();
    Work();
    EXPECT_TRUE(Everything() == after) << "the next run has not completed the work";
    return !HasFailure();
  }

  void KillAtCalls(const std::string& figure) {
    int calls = 0;
    int kills = 0;
    int damaged = 0;
    for (const CallMoment moment : {CallMoment::kBefore, CallMoment::kAfter}) {
      for (int number = 1;; number += Rounds(9, 1)) {
        Restore(before);
        const std::string call =
            KillAtSystemCall([&] { Prepare(); }, [&] { Work(); }, number, moment);
        if (call.empty()) break;
        SCOPED_TRACE(call + ", call " + std::to_string(number));
        calls = std::max(calls, number);
        ++kills;
        if (Survives()) continue;
        ++damaged;
        break;
      }
    }
    TellFigure(figure, Counted(kills) + " kills before and after " + Counted(calls) +
                           " calls of the system, " + Counted(damaged) + " with damage");
  }

  void KillAtRandom(const std::string& figure) {
    const std::uint_fast32_t seed = Seed();
    SCOPED_TRACE("TARVO_TEST_SEED=" + std::to_string(seed));
    std::mt19937 random(seed);
    std::uniform_int_distribution<std::int64_t> moment(
        0, std::chrono::duration_cast<std::chrono::nanoseconds>(duration_).count());
    int kills = 0;
    int halfDone = 0;
    int damaged = 0;
    while (kills < Rounds(12, 1000) && damaged == 0) {
      Restore(before);
      const std::chrono::nanoseconds time(moment(random));
      const int signal = SignalThatEnds([&] {
        Prepare();
        HaveMyselfKilledAfter(time);
        Work();
      });
      if (signal != SIGKILL) continue;  // it was faster than the first time
      ++kills;
      if (!Survives()) ++damaged;
      if (isHalfDone_) ++halfDone;
    }
    std::cout << "TARVO_TEST_SEED=" << seed << "\n";
    TellFigure(figure, Counted(kills) + " kills at random moments, " + Counted(halfDone) +
                           " with the work half done, " + Counted(damaged) + " with damage");
  }

  Clock::duration duration_{};
  bool isHalfDone_ = false;
};

class KilledInstall : public KilledWork {
 protected:
  void Work() override { EXPECT_TRUE(run->Install(newPackage)); }
  void ExpectWholeFiles(const FileTree& found) override {
    ExpectOldOrNew(found, before, after, true);
  }
};

TEST_F(KilledInstall, OfANewDriverLeavesWholeFilesAndTheNextRunInstallsIt) {
  KillEverywhere("killed_install.install", Without(site, InDrivers(kDriver)));
}

TEST_F(KilledInstall, OverAnotherVersionLeavesEachFileOldOrNewAndTheDataAsTheyAre) {
  KillEverywhere("killed_install.reinstall", site);
}

class KilledRemoval : public KilledWork {
 protected:
  void Work() override {
    // A run that was killed at its end has removed the driver.
    if (!std::filesystem::exists(folder / InDrivers(kDriver))) return;
    run->Select(kDriver);
    run->Window().mnuFileDelete_Click();
  }
  void ExpectWholeFiles(const FileTree& found) override { ExpectWholeOrGone(found); }
};

TEST_F(KilledRemoval, LeavesWholeFilesAndTheNextRunRemovesTheRest) {
  KillEverywhere("killed_install.removal", site);
}

}  // namespace
}  // namespace tarvo::test
