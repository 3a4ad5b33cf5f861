// Reading and writing one setting among many, the store opened and closed for each, against what a
// program would use instead: gdbm, a key file of GLib loaded for each, and SQLite. The argument of
// each benchmark is the number of settings. The files lie in the temporary folder (TMPDIR).

#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "peer_stores.h"
#include "platform/platform.h"
#include "settings/record_layout.h"
#include "settings/registry_replacement.h"

namespace tarvo {
namespace {

constexpr int kFewest = 10;
constexpr int kMost = 10'000;
constexpr int kUnchanged = 100;  // settings that are read again although nothing was written there

std::string Key(int number) { return "tarvo.versions_Driver " + std::to_string(number); }
std::string Value(int number) { return "Version 2.1." + std::to_string(number); }
// The value that the nth writing of a setting stores: another one each time, all of one length.
std::string NewValue(int writing) { return "Version 3." + std::to_string(100'000'000 + writing); }

// A folder that goes with the object, for the files of the stores.
class TemporaryFolder {
 public:
  TemporaryFolder() : path_((std::filesystem::temp_directory_path() / "tarvo-XXXXXX").string()) {
    if (!::mkdtemp(path_.data())) throw std::runtime_error("no temporary folder can be made");
  }
  ~TemporaryFolder() { std::filesystem::remove_all(path_); }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::string operator/(std::string_view name) const { return path_ + "/" + std::string(name); }

 private:
  std::string path_;
};

std::string Padded(std::string text) {
  text.resize(kFieldSize, '\0');
  return text;
}

// A settings file with these many entries. Saving them one after the other would take a time that
// grows with the square of their number.
std::string MakeSettingsFile(const TemporaryFolder& folder, int count) {
  const std::string path = folder / kDataFileName;
  std::ofstream file(path, std::ios::binary);
  file << kLengthBytes << Padded("") << Padded("");
  for (int i = 0; i < count; ++i) file << kLengthBytes << Padded(Key(i)) << Padded(Value(i));
  return path;
}

// The store of the benchmark's run, with as many settings as its argument says.
class Settings {
 public:
  explicit Settings(int count) { store.SetRegistryDataFile(MakeSettingsFile(folder_, count)); }
  RegistryReplacement store{SystemPlatform()};

 private:
  TemporaryFolder folder_;
};

// A peer's file with as many settings.
template <class Store>
std::string MakePeer(const TemporaryFolder& folder, int count) {
  const std::string path = folder / "settings";
  typename Store::Maker maker(path);
  for (int i = 0; i < count; ++i) maker.Store(Key(i), Value(i));
  return path;
}

// Asks for one key after the other; every answer must be right.
template <class Get>
void ReadAllInTurn(benchmark::State& state, Get get) {
  const int count = static_cast<int>(state.range());
  int number = 0;
  for (auto _ : state) {
    if (get(Key(number)) != Value(number)) {
      state.SkipWithError("a wrong value was read");
      break;
    }
    number = (number + 1) % count;
  }
}

// Writes a new value of one key after the other; in the end each key that was written must have its
// last one, and a hundred of the others must not have changed.
template <class Save, class Get>
void WriteAllInTurn(benchmark::State& state, Save save, Get get) {
  const int count = static_cast<int>(state.range());
  int writings = 0;
  for (auto _ : state) {
    save(Key(writings % count), NewValue(writings));
    ++writings;
  }
  for (int i = 0; i < std::min(count, writings + kUnchanged); ++i) {
    const int last = (writings - 1 - i) / count * count + i;
    if (get(Key(i)) != (i < writings ? NewValue(last) : Value(i))) {
      state.SkipWithError("a value was not written");
      break;
    }
  }
}

void GetSetting(benchmark::State& state) {
  Settings settings(static_cast<int>(state.range()));
  ReadAllInTurn(state, [&](const std::string& key) { return settings.store.GetSetting(key, "-"); });
}
BENCHMARK(GetSetting)->RangeMultiplier(10)->Range(kFewest, kMost)->Unit(benchmark::kMicrosecond);

// What no look-up can do without: opening the file, reading it once in pieces, closing it.
void ReadFile(benchmark::State& state) {
  constexpr std::size_t kPiece = std::size_t{64} * 1024;
  const int count = static_cast<int>(state.range());
  const TemporaryFolder folder;
  const std::string path = MakeSettingsFile(folder, count);
  std::vector<char> piece(kPiece);
  for (auto _ : state) {
    const auto file = SystemPlatform().OpenFile(path, OpenFor::kReadingAndWriting);
    std::uint64_t offset = 0;
    while (const std::size_t read = file->ReadInto(offset, piece)) offset += read;
    if (offset != static_cast<std::uint64_t>(count + 1) * kRecordSize) {
      state.SkipWithError("the file was not read");
      break;
    }
  }
}
BENCHMARK(ReadFile)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

void GdbmFetch(benchmark::State& state) {
  const TemporaryFolder folder;
  const std::string path = MakePeer<Gdbm>(folder, static_cast<int>(state.range()));
  ReadAllInTurn(state, [&](const std::string& key) { return Gdbm(path).Fetch(key); });
}
BENCHMARK(GdbmFetch)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

void KeyFileLoad(benchmark::State& state) {
  const TemporaryFolder folder;
  const std::string path = MakePeer<KeyFile>(folder, static_cast<int>(state.range()));
  ReadAllInTurn(state, [&](const std::string& key) { return KeyFile(path).Fetch(key); });
}
BENCHMARK(KeyFileLoad)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

void SaveSetting(benchmark::State& state) {
  Settings settings(static_cast<int>(state.range()));
  WriteAllInTurn(
      state,
      [&](const std::string& key, const std::string& value) {
        settings.store.SaveSetting(key, value);
      },
      [&](const std::string& key) { return settings.store.GetSetting(key, "-"); });
}
BENCHMARK(SaveSetting)->RangeMultiplier(10)->Range(kFewest, kMost)->Unit(benchmark::kMicrosecond);

void SqliteStore(benchmark::State& state) {
  const TemporaryFolder folder;
  const std::string path = MakePeer<Sqlite>(folder, static_cast<int>(state.range()));
  WriteAllInTurn(
      state,
      [&](const std::string& key, const std::string& value) { Sqlite(path).Store(key, value); },
      [&](const std::string& key) { return Sqlite(path).Fetch(key); });
}
BENCHMARK(SqliteStore)->Arg(100)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tarvo
