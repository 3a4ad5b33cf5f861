#include "support/made_dictionary.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <sstream>
#include <stdexcept>

namespace tarvo::test {
namespace {

// The text between the first and the last quotation mark of a line.
std::string Quoted(const std::string& line) {
  const std::size_t start = line.find('"') + 1;
  std::string text;
  for (std::size_t i = start; i < line.rfind('"'); ++i) {
    if (line[i] != '\\') {
      text += line[i];
      continue;
    }
    ++i;
    text += line[i] == 'n' ? '\n' : line[i] == 't' ? '\t' : line[i];
  }
  return text;
}

// The texts of a phrase file by their originals: a context stands before its original behind the
// character 4, plural forms are separated by NULs.
std::map<std::string, std::string> Entries(std::string_view poText) {
  std::map<std::string, std::string> entries;
  std::string context;
  std::string original;
  std::string translation;
  std::string* current = nullptr;
  bool isComplete = false;
  const auto keep = [&] {
    if (isComplete && (!translation.empty())) entries[context + original] = translation;
    isComplete = false;
  };
  std::istringstream lines{std::string(poText)};
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("msgctxt ")) {
      keep();
      context = Quoted(line) + '\4';
    } else if (line.starts_with("msgid_plural ")) {
      original += '\0' + Quoted(line);
    } else if (line.starts_with("msgid ")) {
      if (isComplete) {
        keep();
        context.clear();
      }
      original = Quoted(line);
      current = &original;
    } else if (line.starts_with("msgstr")) {
      translation = isComplete ? translation + '\0' + Quoted(line) : Quoted(line);
      isComplete = true;
      current = &translation;
    } else if (line.starts_with('"') && current) {
      *current += Quoted(line);
    } else if (line.empty()) {
      keep();
      context.clear();
      current = nullptr;
    } else {
      throw std::invalid_argument("a line that the tests' compiler does not know: " + line);
    }
  }
  keep();
  return entries;
}

void Append(std::string& bytes, std::size_t value) {
  for (int i = 0; i < 4; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xFF);
}

}  // namespace

std::string MakeDictionary(const TemporaryFolder& folder, std::string_view poText,
                           const std::string& options, const std::string& name) {
  if (!options.empty()) throw std::invalid_argument("the tests' compiler has no options");
  const auto entries = Entries(poText);
  constexpr std::size_t kHeader = 28;
  const std::size_t tableSize = entries.size() * 8;
  std::string originals;
  std::string translations;
  std::string texts;
  const auto add = [&](std::string& table, const std::string& text) {
    Append(table, text.size());
    Append(table, kHeader + 2 * tableSize + texts.size());
    texts += text + '\0';
  };
  for (const auto& [original, translation] : entries) {
    add(originals, original);
    add(translations, translation);
  }
  std::string bytes;
  Append(bytes, 0x950412DE);
  Append(bytes, 0);
  Append(bytes, entries.size());
  Append(bytes, kHeader);
  Append(bytes, kHeader + tableSize);
  Append(bytes, 0);  // no hash table
  Append(bytes, kHeader + 2 * tableSize);
  folder.WriteFile(name, bytes + originals + translations + texts);
  return folder.ReadFile(name);
}

}  // namespace tarvo::test
