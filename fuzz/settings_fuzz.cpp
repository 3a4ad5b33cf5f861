// The settings file with its operations. The input makes a file of records, whole or damaged, and
// names what two stores then do to it one after the other. What they do is held against a second,
// simple telling of the same rules, and apart from that no record of another key may change.

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "base/numbers.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "input.h"
#include "memory_platform.h"
#include "require.h"
#include "settings/registry_replacement.h"
#include "settings_model.h"

namespace tarvo::fuzz {
namespace {

constexpr std::string_view kFile = "/localregistry.dat";
constexpr std::size_t kRecord = SettingsModel::kRecord;

// A system whose clock goes on each time it is looked at. Another program that holds the lock lets
// go of it when it has been waited for long enough.
class Clock final : public MemoryPlatform {
 public:
  static constexpr int kPatience = 20;
  static constexpr double kSecondsPerLook =
      6;  // so long that a waiting store looks at the lock's age

  void BeginOperation() { looks_ = 0; }

  double SecondsSinceMidnight() override {
    const double now = secondsOfDay;
    secondsOfDay += kSecondsPerLook;
    if (secondsOfDay >= 86400) {
      secondsOfDay -= 86400;
      day += 1;
    }
    if (++looks_ == kPatience) {
      std::string& bytes = ContentOf(kFile);
      bytes.replace(0, kRecord, EmptyLock());
    }
    return now;
  }

  static std::string EmptyLock() { return std::string("\0\x08", 2) + std::string(2048, '\0'); }

 private:
  int looks_ = 0;
};

std::string Record(std::string_view length, std::string_view key, std::string_view value) {
  std::string record(length);
  record += key.substr(0, 1024);
  record.resize(1026);
  record += value.substr(0, 1024);
  record.resize(kRecord);
  return record;
}

// Keys that meet each other in letter case, continuation and length, and any other. The longest are
// rare: looking for them takes as long as all else.
std::string SomeKey(Input& input) {
  static const std::string kKeys[] = {
      "Key", "KEY", "key", "K", "\u00C4rger", "\u00E4rger", "Key~2", "", "no\u2192code page"};
  static const std::string kLongKeys[] = {std::string(1000, 'x'), std::string(1001, 'x'),
                                          std::string(999, 'x') + "\u20AC"};
  const unsigned choice = input.Choice(128);
  if (choice >= 128 - std::size(kLongKeys)) return kLongKeys[127 - choice];
  if (choice < 96) return kKeys[choice % std::size(kKeys)];
  return std::string(input.Bytes(choice - 96));
}

// A short value, with characters that the code page lacks among them.
std::string SomeValue(Input& input) {
  static const std::string kShort[] = {"", "1", "2", "\u00E9", "\u2192", std::string("a\0b", 3)};
  const unsigned choice = input.Choice(16);
  if (choice < std::size(kShort)) return kShort[choice];
  return std::string(input.Bytes(choice));
}

// Values around the lengths at which they need one more record.
std::string LongValue(Input& input) {
  static const std::string kLong[] = {std::string(1023, 'a'), std::string(1024, 'b'),
                                      std::string(1025, 'c'), std::string(2049, 'd'),
                                      std::string(1023, 'e') + "\u20ACf"};
  return kLong[input.Choice(std::size(kLong))];
}

std::string SomeRecord(Input& input, Platform& platform) {
  static constexpr std::string_view kWhole{"\0\x08", 2};
  const auto key = [&] { return platform.EncodeCodePage(SomeKey(input)); };
  const auto value = [&] { return platform.EncodeCodePage(SomeValue(input)); };
  switch (input.Choice(16)) {
    case 0:
      return Record(kWhole, "", "");
    case 1: {
      const std::string first = key() + "~" + std::to_string(input.Choice(6));
      return Record(kWhole, first, value());
    }
    case 2:  // both fields without a NUL
      return Record(kWhole, std::string(1024, static_cast<char>(input.Byte())),
                    std::string(1024, 'v'));
    case 3: {  // a length that is not that of the text, which nobody looks at
      const std::string_view length = input.Bytes(2);
      return Record(length.size() == 2 ? length : kWhole, key(), value());
    }
    case 4: {  // empty by its first byte, but not by the others
      const std::string rest = std::string(1, '\0') + std::string(input.Bytes(input.Choice(20)));
      return Record(kWhole, rest, value());
    }
    default: {
      const std::string first = key();
      return Record(kWhole, first, value());
    }
  }
}

// Nobody's, another program's with a time or without, or any record at all.
std::string SomeLock(Input& input, Platform& platform) {
  static constexpr std::string_view kWhole{"\0\x08", 2};
  switch (input.Choice(6)) {
    case 0:
      return Record(kWhole, "another", NumberText(platform.Now(), "."));
    case 1:
      return Record(kWhole, "another", "44999.5");
    case 2:
      return Record(kWhole, "another", "");
    case 3:
      return Record(kWhole, "", input.Bytes(input.Choice(20)));
    default:
      return Clock::EmptyLock();
  }
}

std::string SomeFile(Input& input, Platform& platform) {
  std::string bytes;
  if (input.Choice(8) == 0) return bytes;
  bytes = SomeLock(input, platform);
  for (unsigned left = input.Choice(6); left > 0; --left) bytes += SomeRecord(input, platform);
  switch (input.Choice(6)) {
    case 0:
      bytes.resize(bytes.size() - std::min<std::size_t>(bytes.size(), input.Number16() % 2100));
      break;
    case 1:
      bytes.append(input.Number16() % 2100, 'z');
      break;
  }
  return bytes;
}

// The system and the stores of every run: making a store takes longer than using it.
struct World {
  Clock platform;
  RegistryReplacement first{platform};  // the clock goes on: each has an identity of its own
  RegistryReplacement second{platform};
  RegistryReplacement later{platform};
};

// One run: the file, the stores and the model.
class Session {
 public:
  Session(World& world, Input& input) : world_(world), platform_(world.platform), input_(input) {
    platform_.day = 45000;
    platform_.secondsOfDay = 43200;
    platform_.BeginOperation();
    platform_.PutFile(kFile, SomeFile(input, platform_));
    world.first.SetRegistryDataFile(std::string(kFile));
    world.second.SetRegistryDataFile(std::string(kFile));
  }

  void Run() {
    constexpr int kMostOperations = 5;
    for (int i = 0; i < kMostOperations && !input_.IsEmpty(); ++i) {
      before_ = Bytes();
      platform_.BeginOperation();
      Operate(input_.Choice(2) == 0 ? world_.first : world_.second);
    }
    Reopen();
  }

 private:
  const std::string& Bytes() { return platform_.ContentOf(kFile); }

  void Operate(RegistryReplacement& store) {
    switch (input_.Choice(16)) {
      case 0:
        Put(0, SomeLock(input_, platform_));
        break;
      case 1:
        platform_.secondsOfDay += std::min(input_.Number16(), 86000U);
        break;
      case 2:
        Delete(store, SomeKey(input_));
        break;
      case 3:
        Require(store.EnumEntries() == SettingsModel(before_).Keys(),
                "the keys are those of the file");
        RequireSameEntries(before_);
        break;
      case 4:
        Get(store, SomeKey(input_));
        break;
      case 5: {  // once in a run, and under a key that can be stored: it takes as long as all else
        const std::string key = SomeKey(input_);
        const bool isLong = !hasLongValue_ && IsPlain(key);
        Save(store, key, isLong ? LongValue(input_) : SomeValue(input_));
        hasLongValue_ = hasLongValue_ || isLong;
        break;
      }
      default: {
        const std::string key = SomeKey(input_);
        Save(store, key, SomeValue(input_));
      }
    }
  }

  void Put(std::size_t offset, std::string_view bytes) {
    std::string& file = platform_.ContentOf(kFile);
    if (file.size() < offset + bytes.size()) file.resize(offset + bytes.size());
    file.replace(offset, bytes.size(), bytes);
  }

  void Save(RegistryReplacement& store, const std::string& key, const std::string& value) {
    // What cannot be stored makes eleven records: once in a run.
    const bool isStorable = IsPlain(key) && IsPlain(value);
    if (!isStorable && hasManyRecords_) return;
    hasManyRecords_ = hasManyRecords_ || !isStorable;
    SettingsModel model(before_);
    const bool isRefused = !model.Save(key, value);
    if (RefusesWith5([&] { store.SaveSetting(key, value); }) != isRefused) {
      Require(false, "just the keys that cannot be stored are refused");
    }
    RequireSameEntries(isRefused ? before_ : model.Bytes());
    RequireOthersUntouched(key);
    if (isRefused) return;
    Require(Bytes().substr(0, kRecord) == Clock::EmptyLock(), "the lock is let go");
    if (isStorable && !key.empty() && IsWellKept(key)) {
      Require(store.GetSetting(key, "none") == value, "what is saved is read");
    }
  }

  void Get(RegistryReplacement& store, const std::string& key) {
    std::string value;
    const bool isRefused = RefusesWith5([&] { value = store.GetSetting(key, "default"); });
    Require(isRefused != SettingsModel::IsKey(key),
            "just the keys that cannot be stored are refused");
    RequireSameEntries(before_);
    if (isRefused) return;
    Require(value == SettingsModel(before_).Get(key).value_or("default"), "a value is its chunks");
  }

  void Delete(RegistryReplacement& store, const std::string& key) {
    SettingsModel model(before_);
    model.Delete(key);
    store.DeleteKey(key);
    RequireSameEntries(model.Bytes());
    RequireOthersUntouched(key);
    Require(Bytes().size() >= before_.size(), "the file never shrinks");
  }

  // A store of a later run finds the same.
  void Reopen() {
    const std::string bytes = Bytes();
    const SettingsModel model(bytes);
    platform_.BeginOperation();
    RegistryReplacement& store = world_.later;
    store.SetRegistryDataFile(std::string(kFile));
    Require(store.RegistryDataFile() == kFile, "the file opens again");
    const std::vector<std::string> keys = store.EnumEntries();
    Require(keys == model.Keys(), "a later run finds the same keys");
    for (const std::string& key : keys) {
      if (!SettingsModel::IsKey(key)) continue;
      Require(store.GetSetting(key, "default") == model.Get(key).value_or("default"),
              "a later run finds the same values");
    }
  }

  template <typename Operation>
  static bool RefusesWith5(Operation operation) {
    try {
      operation();
      return false;
    } catch (const RuntimeError& error) {
      Require(error.Number() == kInvalidProcedureCall, "no other error leaves the store");
      return true;
    }
  }

  // All that is behind the lock record is as it should be.
  void RequireSameEntries(const std::string& expected) {
    const std::string& bytes = Bytes();
    if (bytes.size() <= kRecord && expected.size() <= kRecord) {
      Require(bytes.size() == kRecord || bytes.size() == expected.size(), "a lock record is whole");
      return;
    }
    Require(bytes.size() == expected.size(), "the file has the length it should have");
    Require(bytes.compare(kRecord, bytes.npos, expected, kRecord) == 0,
            "the entries are as they should");
    if (before_.size() % kRecord == 0)
      Require(bytes.size() % kRecord == 0, "every record is whole");
  }

  // Records in use that belong to another key have the same bytes as before. A key ends before a
  // NUL.
  void RequireOthersUntouched(std::string_view key) {
    key = CutAtNul(key);
    const SettingsModel before(before_);
    for (long entry = 1; entry <= before.Count(); ++entry) {
      const std::size_t start = static_cast<std::size_t>(entry) * kRecord;
      if (before.IsFree(entry) || before.IsOf(entry, key)) continue;
      const std::string was = before_.substr(std::min(start, before_.size()), kRecord);
      Require(Bytes().compare(start, was.size(), was) == 0, "no other key is touched");
    }
  }

  // Whether every record of a key spells it in the same letter case, and none is there twice: of
  // others, chunks that a shorter value leaves over stay.
  bool IsWellKept(const std::string& key) const {
    const SettingsModel before(before_);
    std::set<std::string> met;
    for (long entry = 1; entry <= before.Count(); ++entry) {
      if (!before.IsOf(entry, key)) continue;
      const bool isNew = met.insert(std::string(before.KeyField(entry))).second;
      if (!isNew || before.BareKey(entry) != key) return false;
    }
    return true;
  }

  // Whether the code page holds the text and no NUL is in it.
  bool IsPlain(const std::string& text) {
    return platform_.DecodeCodePage(platform_.EncodeCodePage(text)) == text &&
           text.find('\0') == text.npos;
  }

  World& world_;
  Clock& platform_;
  Input& input_;
  std::string before_;
  bool hasLongValue_ = false;
  bool hasManyRecords_ = false;
};

}  // namespace
}  // namespace tarvo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tarvo::fuzz::Input input(data, size);
  static tarvo::fuzz::World world;
  tarvo::fuzz::Session(world, input).Run();
  return 0;
}
