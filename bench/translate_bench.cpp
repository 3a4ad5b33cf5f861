// Translating phrases, and loading a dictionary, against gettext and Qt with the same phrases.
//
// Works on the folder TARVO_BENCH_DICTIONARY, which dictionary_data.py makes:
//   phrases.txt                  phrases and their translations in turn, one to a line
//   TARVO.DIC, phrases.qm        the same as Tarvo's dictionary and as Qt's
//   de/LC_MESSAGES/phrases.mo    and as that of gettext
// Every benchmark fails unless it gives each phrase its translation.

#include <benchmark/benchmark.h>
#include <libintl.h>
#include <locale.h>
#include <stdlib.h>

#include <QString>
#include <QTranslator>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "common/library.h"
#include "forms/null_front_end.h"
#include "platform/platform.h"
#include "translate/translator.h"

namespace tarvo {
namespace {

constexpr const char* kDomain = "phrases";
constexpr const char* kContext = "Tarvo";  // of the phrases in Qt's file

struct Phrase {
  std::string english;
  std::string translation;
};

std::string Folder() {
  const char* folder = ::getenv("TARVO_BENCH_DICTIONARY");
  if (!folder) throw std::runtime_error("TARVO_BENCH_DICTIONARY is not set");
  return std::string(folder) + "/";
}

std::vector<Phrase> Phrases() {
  std::ifstream file(Folder() + "phrases.txt");
  std::vector<Phrase> phrases;
  Phrase phrase;
  while (std::getline(file, phrase.english) && std::getline(file, phrase.translation)) {
    phrases.push_back(phrase);
  }
  if (phrases.empty()) throw std::runtime_error("there are no phrases");
  return phrases;
}

template <class Translate>
void Verify(benchmark::State& state, const std::vector<Phrase>& phrases, Translate translate) {
  for (const Phrase& phrase : phrases) {
    if (translate(phrase.english) != phrase.translation) {
      state.SkipWithError("a phrase was not translated");
      return;
    }
  }
}

// What Tarvo's translations need around them.
struct Dictionary {
  void Load() { translator.LoadDictionary(Folder() + "TARVO.DIC"); }

  Platform& platform = SystemPlatform();
  NullFrontEnd frontEnd;
  Library library{platform};
  Translator translator{platform, frontEnd, library};
};

void Translate(benchmark::State& state) {
  const std::vector<Phrase> phrases = Phrases();
  Dictionary dictionary;
  dictionary.Load();
  for (auto _ : state) {
    for (const Phrase& phrase : phrases) {
      benchmark::DoNotOptimize(dictionary.translator.Translate(phrase.english));
    }
  }
  Verify(state, phrases,
         [&](const std::string& english) { return dictionary.translator.Translate(english); });
}
BENCHMARK(Translate)->Unit(benchmark::kMicrosecond);

void Dgettext(benchmark::State& state) {
  const std::vector<Phrase> phrases = Phrases();
  ::setenv("LANGUAGE", "de", 1);
  ::setlocale(LC_ALL, "C.UTF-8");
  ::bindtextdomain(kDomain, Folder().c_str());
  ::bind_textdomain_codeset(kDomain, "UTF-8");
  for (auto _ : state) {
    for (const Phrase& phrase : phrases) {
      benchmark::DoNotOptimize(::dgettext(kDomain, phrase.english.c_str()));
    }
  }
  Verify(state, phrases,
         [](const std::string& english) { return ::dgettext(kDomain, english.c_str()); });
}
BENCHMARK(Dgettext)->Unit(benchmark::kMicrosecond);

void LoadDictionary(benchmark::State& state) {
  for (auto _ : state) {
    Dictionary dictionary;
    dictionary.Load();
    benchmark::DoNotOptimize(dictionary.translator.HasDictionary());
  }
  Dictionary dictionary;
  dictionary.Load();
  Verify(state, Phrases(),
         [&](const std::string& english) { return dictionary.translator.Translate(english); });
}
BENCHMARK(LoadDictionary)->Unit(benchmark::kMicrosecond);

void LoadQm(benchmark::State& state) {
  const QString path = QString::fromStdString(Folder() + "phrases.qm");
  for (auto _ : state) {
    QTranslator translator;
    benchmark::DoNotOptimize(translator.load(path));
  }
  QTranslator translator;
  if (!translator.load(path)) state.SkipWithError("Qt cannot load its file");
  Verify(state, Phrases(), [&](const std::string& english) {
    return translator.translate(kContext, english.c_str()).toStdString();
  });
}
BENCHMARK(LoadQm)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tarvo
