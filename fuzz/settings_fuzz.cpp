// The settings file with its operations. The input makes a file of records, whole or damaged, and
// names what two stores then do to it one after the other. What they do is held against a second,
// simple telling of the same rules, and apart from that no record of another key may change.

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "base/runtime_error.h"
#include "base/text.h"
#include "input.h"
#include "require.h"
#include "settings/registry_replacement.h"
#include "settings_input.h"
#include "settings_model.h"

namespace tarvo::fuzz {
namespace {

constexpr std::size_t kRecord = SettingsModel::kRecord;

// The system and the stores of every run: making a store takes longer than using it.
struct World {
  TickingPlatform platform;
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
    platform_.PutFile(kSettingsFile, SomeFile(input, platform_));
    world.first.SetRegistryDataFile(std::string(kSettingsFile));
    world.second.SetRegistryDataFile(std::string(kSettingsFile));
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
  const std::string& Bytes() { return platform_.ContentOf(kSettingsFile); }

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
    std::string& file = platform_.ContentOf(kSettingsFile);
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
    Require(Bytes().substr(0, kRecord) == EmptyLock(), "the lock is let go");
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
    store.SetRegistryDataFile(std::string(kSettingsFile));
    Require(store.RegistryDataFile() == kSettingsFile, "the file opens again");
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
  TickingPlatform& platform_;
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
