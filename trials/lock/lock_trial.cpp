#include <gtest/gtest.h>

#include <optional>
#include <utility>

#include "crowd.h"
#include "platform/forwarding_platform.h"
#include "settings/registry_replacement.h"
#include "shared_file.h"
#include "support/temporary_folder.h"
#include "trial.h"

namespace tarvo::test {
namespace {

constexpr int kProcesses = 8;

int Keys() { return Rounds(8, 250); }

// The system, with the moment of the stores' making and the decimal sign as they are wanted.
class Circumstances : public ForwardingPlatform {
 public:
  Circumstances() : ForwardingPlatform(SystemPlatform()) {}

  // The first store made is made at this second of the day; nothing for the true one.
  std::optional<double> madeAt;
  std::string decimalSign = ".";

  double SecondsSinceMidnight() override {
    const std::optional<double> moment = std::exchange(madeAt, std::nullopt);
    return moment ? *moment : ForwardingPlatform::SecondsSinceMidnight();
  }
  std::string DecimalSeparator() override { return decimalSign; }
};

class Lock : public testing::Test {
 protected:
  std::string Path() const { return folder_ / "localregistry.dat"; }

  // How a process comes to its store.
  using Arrange = std::function<void(Circumstances&, int process)>;
  static void AsItComes(Circumstances&, int) {}
  static void MadeAtDifferentTimes(Circumstances& circumstances, int process) {
    circumstances.madeAt = 40000 + process;
  }
  static void MadeAtTheSameTime(Circumstances& circumstances, int) { circumstances.madeAt = 40000; }
  static void WithDecimalComma(Circumstances& circumstances, int process) {
    MadeAtDifferentTimes(circumstances, process);
    circumstances.decimalSign = ",";
  }

  // Lets processes add their keys to an empty file, all at once, and gives what becomes of them.
  Findings AddKeys(int rounds, const Arrange& arrange) {
    Findings findings;
    for (int round = 1; round <= rounds; ++round) {
      folder_.WriteFile("localregistry.dat");
      DoAtOnce(kProcesses, [&](int process) {
        Circumstances circumstances;
        arrange(circumstances, process);
        RegistryReplacement store(circumstances);
        store.SetRegistryDataFile(Path());
        for (int key = 0; key < Keys(); ++key) {
          store.SaveSetting(KeyOf(process, key), ValueOf(process, key, round));
        }
      });
      findings += Examine(ReadFileAt(Path()), kProcesses, Keys(), round);
    }
    return findings;
  }

  // What docs/settings-file.md admits: a program that the system stops between its last look and
  // its writing may overwrite one entry of another. That is rarer where the lock is worth more.
  static constexpr long long kWithLock = 10'000;
  static constexpr long long kWithoutLock = 1'000;
  static void ExpectKept(const Findings& findings, long long added, long long oneIn = kWithLock) {
    EXPECT_LE(findings.lost, 1 + added / oneIn);
    Findings others = findings;
    others.lost = 0;
    EXPECT_EQ(others, Findings());
  }

  static void TellAndExpectKept(std::string_view name, int rounds, const Findings& findings,
                                long long oneIn = kWithLock) {
    const long long added = 1LL * rounds * kProcesses * Keys();
    TellFigure(name, Counted(added) + " keys added by 8 processes, " + TextOf(findings));
    ExpectKept(findings, added, oneIn);
  }

  TemporaryFolder folder_;
};

TEST_F(Lock, ProcessesThatSaveTheirExistingKeysAtOnceLoseAndTearNothing) {
  const int rounds = Rounds(2, 20);
  folder_.WriteFile("localregistry.dat", FileWithKeys(kProcesses, Keys()));
  SharedCount tornReadings;
  DoAtOnce(kProcesses, [&](int process) {
    RegistryReplacement store(SystemPlatform());
    store.SetRegistryDataFile(Path());
    const int neighbour = (process + 1) % kProcesses;
    for (int round = 1; round <= rounds; ++round) {
      for (int key = 0; key < Keys(); ++key) {
        store.SaveSetting(KeyOf(process, key), ValueOf(process, key, round));
        const std::string theirs = store.GetSetting(KeyOf(neighbour, key), "");
        tornReadings.Add(!IsValueOf(neighbour, key, theirs));
      }
    }
  });
  const Findings findings = Examine(ReadFileAt(Path()), kProcesses, Keys(), rounds);
  const long long writes = 1LL * rounds * kProcesses * Keys();
  TellFigure("lock.existing_keys", Counted(writes) + " writes by 8 processes, " + TextOf(findings) +
                                       "; as many readings, " + Counted(tornReadings.Get()) +
                                       " torn");
  EXPECT_EQ(findings, Findings());
  EXPECT_EQ(tornReadings.Get(), 0);
}

TEST_F(Lock, AValueIsReadWholeWhileItIsBeingWritten) {
  const long long readings = Rounds(500, 50'000);
  folder_.WriteFile("localregistry.dat", FileWithKeys(kProcesses / 2, 1));
  SharedCount read;
  SharedCount torn;
  DoAtOnce(kProcesses, [&](int process) {
    RegistryReplacement store(SystemPlatform());
    store.SetRegistryDataFile(Path());
    for (int round = 0; read.Get() < readings; ++round) {
      const int key = (process + round) % (kProcesses / 2);
      if (process < kProcesses / 2) {
        store.SaveSetting(KeyOf(process, 0), ValueOf(process, 0, round));
      } else {
        torn.Add(!IsValueOf(key, 0, store.GetSetting(KeyOf(key, 0), "")));
        read.Add(1);
      }
    }
  });
  TellFigure("lock.readings", Counted(read.Get()) +
                                  " readings by 4 processes of values that 4 others write, " +
                                  Counted(torn.Get()) + " torn");
  EXPECT_EQ(torn.Get(), 0);
}

TEST_F(Lock, ProcessesStartedAtOnceThatAddKeysLoseNone) {
  const int rounds = Rounds(2, 20);
  const Findings findings = AddKeys(rounds, AsItComes);
  TellAndExpectKept("lock.new_keys", rounds, findings);
}

TEST_F(Lock, ProcessesWithIdentitiesOfTheirOwnThatAddKeysAtOnceLoseNone) {
  const int rounds = Rounds(2, 20);
  const Findings findings = AddKeys(rounds, MadeAtDifferentTimes);
  TellAndExpectKept("lock.own_identities", rounds, findings);
}

TEST_F(Lock, StoresMadeInTheSameHundredthOfASecondLoseNoKeyThatTheyAddAtOnce) {
  const int rounds = Rounds(2, 20);
  const Findings findings = AddKeys(rounds, MadeAtTheSameTime);
  TellAndExpectKept("lock.same_identity", rounds, findings);
}

TEST_F(Lock, ProcessesThatAddKeysAtOnceUnderADecimalCommaLoseNone) {
  const int rounds = Rounds(2, 20);
  const Findings findings = AddKeys(rounds, WithDecimalComma);
  TellAndExpectKept("lock.decimal_comma", rounds, findings, kWithoutLock);
}

// Half of the processes delete and save keys that they have in common; the records that this frees
// go to the new keys of the other half.
TEST_F(Lock, KeysAddedWhileOthersDeleteAndSaveTheirsAreNotOverwritten) {
  const int rounds = Rounds(2, 20);
  Findings findings;
  for (int round = 1; round <= rounds; ++round) {
    folder_.WriteFile("localregistry.dat");
    DoAtOnce(kProcesses, [&](int process) {
      Circumstances circumstances;
      MadeAtDifferentTimes(circumstances, process);
      RegistryReplacement store(circumstances);
      store.SetRegistryDataFile(Path());
      for (int key = 0; key < Keys(); ++key) {
        const std::string common = "Common " + std::to_string(key % 4);
        if (process < kProcesses / 2) {
          store.SaveSetting(KeyOf(process, key), ValueOf(process, key, round));
        } else if ((process + key / 4) % 2 == 0) {
          store.DeleteKey(common);
        } else {
          store.SaveSetting(common, "value");
        }
      }
    });
    findings += Examine(ReadFileAt(Path()), kProcesses / 2, Keys(), round);
  }
  const long long added = 1LL * rounds * kProcesses / 2 * Keys();
  TellFigure("lock.freed_records",
             Counted(added) +
                 " keys added by 4 processes while 4 others delete and save four keys, " +
                 TextOf(findings));
  ExpectKept(findings, added, kWithoutLock);
}

}  // namespace
}  // namespace tarvo::test
