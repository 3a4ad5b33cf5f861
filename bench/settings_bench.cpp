// Reading one setting of a hundred, the store opened and closed for each, against gdbm used alike.

#include <benchmark/benchmark.h>
#include <gdbm.h>
#include <stdlib.h>

#include <filesystem>
#include <stdexcept>
#include <string>

#include "platform/platform.h"
#include "settings/registry_replacement.h"

namespace tarvo {
namespace {

constexpr int kKeys = 100;

std::string Key(int number) { return "tarvo.versions_Driver " + std::to_string(number); }
std::string Value(int number) { return "Version 2.1." + std::to_string(number); }

// A folder that goes with the object, for the files of both stores.
class TemporaryFolder {
 public:
  TemporaryFolder() : path_((std::filesystem::temp_directory_path() / "tarvo-XXXXXX").string()) {
    if (!::mkdtemp(path_.data())) throw std::runtime_error("no temporary folder can be made");
  }
  ~TemporaryFolder() { std::filesystem::remove_all(path_); }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::string operator/(const char* name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

// An open gdbm file.
class Gdbm {
 public:
  Gdbm(const std::string& path, int mode) : file_(::gdbm_open(path.c_str(), 0, mode, 0600, {})) {
    if (!file_) throw std::runtime_error("gdbm cannot open its file");
  }
  ~Gdbm() { ::gdbm_close(file_); }
  Gdbm(const Gdbm&) = delete;
  Gdbm& operator=(const Gdbm&) = delete;

  void Store(std::string key, std::string value) {
    ::gdbm_store(file_, Datum(key), Datum(value), GDBM_REPLACE);
  }
  std::string Fetch(std::string key) {
    const datum found = ::gdbm_fetch(file_, Datum(key));
    if (!found.dptr) return {};
    const std::string value(found.dptr, static_cast<std::size_t>(found.dsize));
    ::free(found.dptr);
    return value;
  }

 private:
  static datum Datum(std::string& text) { return {text.data(), static_cast<int>(text.size())}; }

  GDBM_FILE file_;
};

// Asks for one key after the other; every answer must be right.
template <class Get>
void ReadAllInTurn(benchmark::State& state, Get get) {
  int number = 0;
  for (auto _ : state) {
    if (get(Key(number)) != Value(number)) {
      state.SkipWithError("a wrong value was read");
      break;
    }
    number = (number + 1) % kKeys;
  }
}

void GetSetting(benchmark::State& state) {
  const TemporaryFolder folder;
  RegistryReplacement store(SystemPlatform());
  store.SetRegistryDataFile(folder / "localregistry.dat");
  for (int i = 0; i < kKeys; ++i) store.SaveSetting(Key(i), Value(i));
  ReadAllInTurn(state, [&](const std::string& key) { return store.GetSetting(key, "-"); });
}
BENCHMARK(GetSetting)->Unit(benchmark::kMicrosecond);

void GdbmFetch(benchmark::State& state) {
  const TemporaryFolder folder;
  const std::string path = folder / "settings.gdbm";
  {
    Gdbm made(path, GDBM_NEWDB);
    for (int i = 0; i < kKeys; ++i) made.Store(Key(i), Value(i));
  }
  ReadAllInTurn(state, [&](const std::string& key) { return Gdbm(path, GDBM_READER).Fetch(key); });
}
BENCHMARK(GdbmFetch)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tarvo
