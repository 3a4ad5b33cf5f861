// Building the driver list, and counting data files alone, against one pass of the standard library
// over the same folders. Works on the catalogue below TARVO_COMMON_DOCUMENTS, as the program does;
// catalogue_data.py makes one.

#include <benchmark/benchmark.h>

#include <array>
#include <filesystem>
#include <string>
#include <string_view>

#include "app/globals/data_folder.h"
#include "app/globals/globals.h"
#include "catalogue/data_files.h"
#include "catalogue/driver_list.h"
#include "catalogue/main_window.h"
#include "forms/null_front_end.h"
#include "platform/names.h"

namespace tarvo {
namespace {

// How many files have each of the counted extensions.
using Counts = std::array<int, kDataFilePatterns.size()>;

class PlainWindow : public MainWindow {};

// The main window's state with nothing to see, in the data folder.
struct Run {
  Run() {
    globals.OpenSettings();
    window.dataPath = GetDataDirectory(globals);
    globals.platform.ChangeCurrentFolder(window.dataPath);
  }
  std::string Drivers() const { return window.dataPath + "Drivers"; }

  NullFrontEnd frontEnd;
  Globals globals{SystemPlatform(), frontEnd, ""};
  PlainWindow window;
};

Counts StandardPass(const std::string& folder) {
  constexpr std::array<std::string_view, std::tuple_size_v<Counts>> kEndings{".csv", ".asc",
                                                                             ".txt"};
  Counts counts{};
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    for (std::size_t i = 0; i < counts.size(); ++i) {
      if (entry.path().native().ends_with(kEndings[i]) && entry.is_regular_file()) ++counts[i];
    }
  }
  return counts;
}

Counts CountDataFiles(Run& run) {
  Platform& platform = run.globals.platform;
  Counts counts{};
  for (const FolderEntry& driver : ListFolder(platform, ".", "*.*", kDirectory)) {
    DataFileTree files(platform, run.frontEnd, driver.name);
    for (std::size_t i = 0; i < counts.size(); ++i) counts[i] += files.Count(i);
  }
  return counts;
}

Counts CountsInList(const ListView& list) {
  Counts counts{};
  for (int item = 0; item < list.Count(); ++item) {
    for (std::size_t i = 0; i < counts.size(); ++i) {
      const std::string& text = list.ItemAt(item).SubItems[i];
      if (!text.empty()) counts[i] += std::stoi(text);
    }
  }
  return counts;
}

// A figure counts only if the work was done: there are files, and both sides find the same.
void Verify(benchmark::State& state, const Run& run, const Counts& counts) {
  const Counts expected = StandardPass(run.Drivers());
  if (counts != expected) state.SkipWithError("the counts differ from those of a plain pass");
  if (expected[0] == 0) state.SkipWithError("there are no drivers with data files");
}

void List(benchmark::State& state) {
  Run run;
  for (auto _ : state) UpdateDriverList(run.globals, run.window);
  Verify(state, run, CountsInList(run.window.lvListView));
}
BENCHMARK(List)->Unit(benchmark::kMillisecond);

void Count(benchmark::State& state) {
  Run run;
  Counts counts{};
  run.globals.platform.ChangeCurrentFolder(run.Drivers());
  for (auto _ : state) counts = CountDataFiles(run);
  Verify(state, run, counts);
}
BENCHMARK(Count)->Unit(benchmark::kMillisecond);

void Pass(benchmark::State& state) {
  Run run;
  Counts counts{};
  const std::string drivers = run.Drivers();
  for (auto _ : state) counts = StandardPass(drivers);
  Verify(state, run, counts);
}
BENCHMARK(Pass)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvo
