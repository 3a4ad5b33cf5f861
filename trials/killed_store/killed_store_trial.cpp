#include <algorithm>
#include <map>
#include <random>
#include <set>

#include "settings/store_fixture.h"
#include "support/killed_process.h"
#include "support/traced_process.h"
#include "trial.h"

namespace tarvo::test {
namespace {

constexpr std::size_t kField = 1024;
constexpr int kBystanders = 40;
const std::string kBystander = "Bystander ";  // and a number: a key that nobody touches
const std::string kBystandersValue(kField, 'B');
const std::string kShort = "Short";  // up to 780 characters
const std::string kFull = "Full";    // one record, filled
const std::string kLong = "Long";    // three records
const std::string kNext = "Next";    // a short value of the next process

// How many characters of one letter stand in the record of a stored key. A record with another
// letter or number of them is put together from two.
std::size_t SizeIn(const std::string& storedKey, char letter) {
  if (storedKey == kShort || storedKey == kNext) {
    return 30 * static_cast<std::size_t>(letter - 'a' + 1);
  }
  return storedKey == kLong + "~3" ? 500 : kField;
}

std::string ValueFor(const std::string& key, char letter) {
  return std::string(key == kLong ? 2 * kField + 500 : SizeIn(key, letter), letter);
}

std::string CutAtNul(std::string_view field) {
  return std::string(field.substr(0, field.find('\0')));
}

bool IsWhole(std::string_view field, const std::string& storedKey) {
  const char letter = field[0];
  return letter >= 'a' && letter <= 'z' &&
         CutAtNul(field) == std::string(SizeIn(storedKey, letter), letter);
}

using Keys = std::vector<std::string>;

struct Operation {
  const char* name;
  bool isInFullFile;  // no record is free: what is new comes to the end
  std::function<void(RegistryReplacement&)> prepare;
  std::function<void(RegistryReplacement&)> run;
};

class KilledStore : public StoreTest {
 protected:
  KilledStore() {
    SetClock();
    for (int i = 0; i < kBystanders; ++i) {
      store.SaveSetting(kBystander + std::to_string(i), kBystandersValue);
    }
  }

  // Sets the clock to the true time; it stands still.
  void SetClock() {
    platform.day = std::floor(SystemPlatform().Now());
    platform.secondsOfDay = SystemPlatform().SecondsSinceMidnight();
  }

  int KillAtCalls(const Operation& operation, CallMoment moment, std::set<std::string>& names);
  // Takes the free records out of the file.
  void Fill() const {
    const std::string before = Bytes();
    std::string bytes = before.substr(0, kRecord);
    for (std::size_t at = kRecord; at < before.size(); at += kRecord) {
      if (!FirstFieldOf(before, at / kRecord + 1).empty()) bytes += before.substr(at, kRecord);
    }
    WriteBytes(bytes);
  }

  void KillAtRandomMoments(std::string_view figure, int kills, const Keys& keys);

  // Looks at what the killed process has left: free records, and whole ones of these keys, each
  // once. What stands behind the NUL that ends a text, or makes a record free, does not count.
  void Examine(const std::string& what) {
    const std::string bytes = Bytes();
    std::set<std::string> keys;
    bool isWhole = true;
    int untouched = 0;
    for (std::size_t at = kRecord; at < bytes.size(); at += kRecord) {
      const std::string record = bytes.substr(at, kRecord);
      isWhole = isWhole && record.starts_with(std::string_view("\0\x08", 2));
      const std::string key = FirstFieldOf(bytes, at / kRecord + 1);
      if (key.empty()) continue;
      const std::string value = bytes.substr(at + kRecord - kField, kField);
      const bool isBystander = key.starts_with(kBystander);
      untouched += isBystander && value == kBystandersValue;
      isWhole = isWhole && keys.insert(key).second && (isBystander || IsWhole(value, key));
    }
    Require(isWhole, "torn", what);
    Require(untouched == kBystanders, "other", what);
    locked += !FirstFieldOf(bytes, 1).empty();
  }

  // Lets the next process save, read and delete, and looks whether it comes to its end within a
  // minute by its clock, which moves at each reading.
  void Continue(const std::string& what) {
    platform.secondsPerReading = 0.25;
    const double start = platform.Now();
    RegistryReplacement next(platform);
    next.SetRegistryDataFile(Path());
    bool works = true;
    for (const std::string& key : {kNext, kShort, kFull, kLong}) {
      next.SaveSetting(key, ValueFor(key, 'n'));
      works = works && next.GetSetting(key, "") == ValueFor(key, 'n');
    }
    const double seconds = (platform.Now() - start) * 86400;
    platform.secondsPerReading = 0;
    longestWait = std::max(longestWait, seconds);
    next.DeleteKey(kNext);
    works = works && next.GetSetting(kNext, "").empty() && seconds < 60 &&
            Bytes().substr(0, kRecord) == EmptyRecordBytes();
    Require(works, "next", what);
  }

  void Require(bool holds, const std::string& promise, const std::string& what) {
    if (holds) return;
    ++broken[promise];
    if (promise != "torn" || !admitsTorn) ADD_FAILURE() << promise << ": " << what;
  }

  void Tell(std::string_view name, const std::string& kills) {
    const auto wait = static_cast<long long>(std::ceil(longestWait));
    TellFigure(name, kills + ": " + Counted(broken["torn"]) + " records torn, " +
                         Counted(broken["other"]) + " times another key changed, " +
                         Counted(broken["next"]) + " times the next process hindered; " +
                         Counted(locked) + " locks left, waited for at most " + Counted(wait) +
                         " s");
  }

  bool admitsTorn = false;
  std::map<std::string, int> broken;  // how often a promise has not been kept
  int locked = 0;
  double longestWait = 0;
};

// Saves over a value, or where there is none.
Operation Saving(const char* name, const std::string& key, const std::string& before,
                 const std::string& after, bool isInFullFile = false) {
  const auto prepare = [=](RegistryReplacement& store) {
    store.DeleteKey(key);
    if (!before.empty()) store.SaveSetting(key, before);
  };
  return {name, isInFullFile, prepare,
          [=](RegistryReplacement& store) { store.SaveSetting(key, after); }};
}

Operation Deleting(const char* name, const std::string& key) {
  return {name, false,
          [=](RegistryReplacement& store) { store.SaveSetting(key, ValueFor(key, 'h')); },
          [=](RegistryReplacement& store) { store.DeleteKey(key); }};
}

const Operation kOperations[] = {
    Saving("saving a new value", kShort, "", ValueFor(kShort, 'z')),
    Saving("saving over a value", kShort, ValueFor(kShort, 'y'), ValueFor(kShort, 'b')),
    Saving("saving a new long value", kLong, "", ValueFor(kLong, 'c')),
    Saving("saving a new value at the end", kShort, "", ValueFor(kShort, 'z'), true),
    Saving("saving a new long value at the end", kLong, "", ValueFor(kLong, 'c'), true),
    Saving("saving over a long value", kLong, ValueFor(kLong, 'c'), ValueFor(kLong, 'd')),
    Saving("saving a shorter value over a long one", kLong, ValueFor(kLong, 'e'),
           ValueFor(kFull, 'f')),
    Deleting("deleting", kFull),
    Deleting("deleting a long value", kLong),
};

// A process dies at each of its calls that change the file. Gives how many there are.
int KilledStore::KillAtCalls(const Operation& operation, CallMoment moment,
                             std::set<std::string>& names) {
  for (int calls = 0;; ++calls) {
    operation.prepare(store);
    if (operation.isInFullFile) Fill();
    std::unique_ptr<RegistryReplacement> dying;
    const auto open = [&] {
      dying = std::make_unique<RegistryReplacement>(SystemPlatform());
      dying->SetRegistryDataFile(Path());
    };
    const std::string call = KillAtSystemCall(
        open, [&] { operation.run(*dying); }, calls + 1, moment);
    const std::string what =
        std::string(operation.name) + ", call " + std::to_string(calls + 1) + ", " + call;
    Examine(what);
    SetClock();
    Continue(what);
    if (call.empty() || HasFailure()) return calls;
    names.insert(call);
  }
}

TEST_F(KilledStore, AtEachCallThatWritesLeavesWholeRecordsAndTheNextProcessWorks) {
  int calls = 0;
  std::set<std::string> names;
  for (const Operation& operation : kOperations) {
    const int before = KillAtCalls(operation, CallMoment::kBefore, names);
    EXPECT_GT(before, 0) << operation.name;
    EXPECT_EQ(KillAtCalls(operation, CallMoment::kAfter, names), before) << operation.name;
    calls += before;
  }
  // One that changes a record, and the one that adds records at the end.
  EXPECT_TRUE(names.contains("pwrite") && names.contains("pwritev2"));
  Tell("killed_store.calls",
       Counted(2 * calls) + " kills before and after " + Counted(calls) + " calls of the system");
}

// Saves and deletes until it is killed.
void WorkOn(const std::string& path, const Keys& keys, unsigned seed) {
  std::mt19937 random(seed);
  RegistryReplacement store(SystemPlatform());
  store.SetRegistryDataFile(path);
  for (;;) {
    const std::string& key = keys[random() % keys.size()];
    if (random() % 3 == 0) {
      store.DeleteKey(key);
    } else {
      store.SaveSetting(key, ValueFor(key, static_cast<char>('a' + random() % 26)));
    }
  }
}

void KilledStore::KillAtRandomMoments(std::string_view figure, int kills, const Keys& keys) {
  constexpr int kLongestMicroseconds = 1500;
  std::mt19937 random(2050);
  for (int kill = 0; kill < kills; ++kill) {
    const auto time = std::chrono::microseconds(100 + random() % kLongestMicroseconds);
    const unsigned seed = static_cast<unsigned>(random());
    ASSERT_EQ(SignalThatEnds([&] {
                HaveMyselfKilledAfter(time);
                WorkOn(Path(), keys, seed);
              }),
              SIGKILL);
    const std::string what = "kill " + std::to_string(kill);
    Examine(what);
    // The next process comes at once: its clock is the true one when it starts.
    SetClock();
    Continue(what);
  }
  Tell(figure, Counted(kills) + " kills at random moments");
}

TEST_F(KilledStore, AtRandomMomentsLeavesWholeRecordsAndTheNextProcessWorks) {
  KillAtRandomMoments("killed_store.moments", Rounds(60, 1000), {kShort});
}

// Values that fill their records reach over the file's pages. The system ends the call of a killed
// process where a page ends; of a value that is saved over another, both parts count.
TEST_F(KilledStore, AtRandomMomentsLeavesAllOtherKeysAndAWorkingFileWhenValuesFillTheirRecords) {
  admitsTorn = true;
  const int kills = Rounds(60, 1000);
  KillAtRandomMoments("killed_store.full_records", kills, {kFull, kLong});
  EXPECT_LE(broken["torn"], 1 + kills / 50);
}

}  // namespace
}  // namespace tarvo::test
