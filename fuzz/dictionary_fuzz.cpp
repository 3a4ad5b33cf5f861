// The dictionary: reading a catalogue, its two orders, and looking up phrases. The input is the
// file.

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/runtime_error.h"
#include "base/text.h"
#include "forms/null_front_end.h"
#include "input.h"
#include "memory_platform.h"
#include "require.h"
#include "translate/mo_file.h"
#include "translate/mo_format.h"
#include "translate/translator.h"

namespace tarvo::fuzz {
namespace {

constexpr std::string_view kFile = "/TARVO.DIC";

using Pairs = std::vector<std::pair<std::string, std::string>>;

bool IsValid(std::string_view text) { return ValidUtf8(text) == text; }

// What the reader makes of some bytes; nothing when it refuses them.
std::optional<Pairs> Read(std::string_view bytes) {
  try {
    Pairs pairs;
    for (const MoEntry& entry : ReadMoFile(bytes, kFile).entries) {
      pairs.emplace_back(entry.original, entry.translation);
    }
    return pairs;
  } catch (const RuntimeError& error) {
    Require(error.Number() == kInvalidFileFormat, "a file that is no dictionary is error 321");
    Require(IsValid(error.Description()), "the description can be shown");
    Require(error.Description().find(kFile) != std::string::npos, "the description names the file");
    return std::nullopt;
  }
}

// A catalogue with these records, its numbers big-endian or little-endian.
std::string Written(const Pairs& pairs, bool isBigEndian) {
  std::string bytes;
  const auto put = [&](std::size_t number) {
    for (unsigned i = 0; i < 4; ++i) {
      bytes += static_cast<char>(number >> 8 * (isBigEndian ? 3 - i : i));
    }
  };
  const std::size_t originals = mo::kHeaderSize;
  const std::size_t translations = originals + mo::kTableEntrySize * pairs.size();
  std::size_t at = translations + mo::kTableEntrySize * pairs.size();
  for (const std::size_t number : {std::size_t{mo::kMagic}, std::size_t{0}, pairs.size(), originals,
                                   translations, at - at, at}) {
    put(number);
  }
  std::string texts;
  const auto putPlace = [&](const std::string& text) {
    put(text.size());
    put(at + texts.size());
    texts += text;
    texts += '\0';
  };
  for (const auto& [original, translation] : pairs) putPlace(original);
  for (const auto& [original, translation] : pairs) putPlace(translation);
  return bytes + texts;
}

// The records of a table from the first to the last.
Pairs Walked(DictionaryTable& table) {
  Pairs pairs;
  for (; !table.AtEnd(); table.MoveNext()) {
    const DictionaryTable::Record record = table.CurrentRecord();
    pairs.emplace_back(record.Item("English").Value(), record.Item(2).Value());
  }
  Require(table.CurrentRecord().Item(1).Value().empty(), "behind the last record there is nothing");
  Require(pairs.size() == static_cast<std::size_t>(table.RecordCount()),
          "every record is met once");
  return pairs;
}

void CheckOrder(MemoryPlatform& platform, const Pairs& pairs, std::string_view field) {
  DictionaryTable table;
  table.SetFileName(platform, kFile);
  table.SetOrderField(field);
  Pairs ordered = Walked(table);
  const bool isEnglish = field == kEnglishField;
  for (std::size_t i = 1; i < ordered.size(); ++i) {
    const std::string& before = isEnglish ? ordered[i - 1].first : ordered[i - 1].second;
    const std::string& text = isEnglish ? ordered[i].first : ordered[i].second;
    if (!IsValid(before) || !IsValid(text)) continue;
    Require(CompareIgnoringCase(before, text) <= 0, "the records are in their order");
  }
  Pairs expected = pairs;
  std::sort(ordered.begin(), ordered.end());
  std::sort(expected.begin(), expected.end());
  Require(ordered == expected, "an order loses no record");
}

// The translation of the first record of a phrase, by looking at each; the phrase without one.
std::string Expected(const Pairs& pairs, const std::string& phrase) {
  for (const auto& [original, translation] : pairs) {
    if (original != phrase) continue;
    return translation.find_first_not_of(' ') == std::string::npos ? phrase : translation;
  }
  return phrase;
}

void CheckPhrases(Translator& translator, const Pairs& pairs) {
  constexpr std::size_t kMost = 40;
  for (std::size_t i = 0; i < std::min(kMost, pairs.size()); ++i) {
    const std::string& phrase = pairs[i].first;
    for (const std::string& sought : {phrase, phrase + ".", LowerCase(phrase), UpperCase(phrase)}) {
      const std::string expected = Expected(pairs, sought);
      if (expected.find("%1") != std::string::npos) continue;
      Require(translator.Translate(sought) == expected,
              "a phrase has the translation of its record");
    }
  }
}

void Run(Input input) {
  const std::string_view bytes = input.Rest();
  MemoryPlatform platform;
  platform.PutFile(kFile, bytes);
  const std::optional<Pairs> pairs = Read(bytes);

  static NullFrontEnd frontEnd;
  Library library(platform);
  Translator translator(platform, frontEnd, library);
  try {
    translator.LoadDictionary(kFile);
  } catch (const RuntimeError&) {
    Require(!pairs, "what can be read can be loaded");
  }
  Require(translator.HasDictionary() == pairs.has_value(), "what cannot be read is not loaded");
  Require(IsValid(translator.Language()), "the language can be shown");
  if (!pairs) {
    Require(translator.Translate("Open") == "Open" && translator.ApplicationTitle() == "Tarvo",
            "without a dictionary a phrase is itself");
    return;
  }
  for (const auto& [original, translation] : *pairs) {
    Require(!original.empty() && original.find('\0') == original.npos, "phrases are not plurals");
  }
  CheckPhrases(translator, *pairs);
  CheckOrder(platform, *pairs, kEnglishField);
  CheckOrder(platform, *pairs, kTranslationField);
  Require(Read(Written(*pairs, true)) == pairs, "the order of bytes does not matter: big-endian");
  Require(Read(Written(*pairs, false)) == pairs,
          "the order of bytes does not matter: little-endian");
}

}  // namespace
}  // namespace tarvo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tarvo::fuzz::Run({data, size});
  return 0;
}
