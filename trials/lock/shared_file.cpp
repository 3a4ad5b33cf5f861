#include "shared_file.h"

#include <map>
#include <string_view>

#include "trial.h"

namespace tarvo::test {
namespace {

// Written down independently of the program's own constants.
constexpr std::size_t kRecord = 2050;
constexpr std::size_t kField = 1024;
constexpr std::string_view kOwnKeys = "Process ";

std::string Padded(std::string text) {
  text.resize(kField, '\0');
  return text;
}

std::string CutAtNul(std::string_view field) {
  return std::string(field.substr(0, field.find('\0')));
}

std::string RoundMark(int process, int key, int round) {
  return KeyOf(process, key) + " round " + std::to_string(round) + ". ";
}

std::string Filled(const std::string& mark) {
  std::string value;
  while (value.size() < kField) value += mark;
  value.resize(kField);
  return value;
}

// A value without its round: it is the mark of some round again and again.
bool IsMadeOf(const std::string& value, const std::string& start) {
  return value.starts_with(start) && value == Filled(value.substr(0, value.find(". ") + 2));
}

}  // namespace

std::string KeyOf(int process, int key) {
  return std::string(kOwnKeys) + std::to_string(process) + " key " + std::to_string(key);
}

std::string ValueOf(int process, int key, int round) {
  return Filled(RoundMark(process, key, round));
}

bool IsValueOf(int process, int key, const std::string& value) {
  return IsMadeOf(value, KeyOf(process, key) + " round ");
}

Findings& Findings::operator+=(const Findings& other) {
  lost += other.lost;
  old += other.old;
  twice += other.twice;
  torn += other.torn;
  locks += other.locks;
  return *this;
}

Findings Examine(const std::string& bytes, int processes, int keys, int round) {
  Findings findings;
  std::map<std::string, std::pair<int, int>> owners;
  for (int process = 0; process < processes; ++process) {
    for (int key = 0; key < keys; ++key) owners[KeyOf(process, key)] = {process, key};
  }
  std::map<std::string, std::string> values;
  for (std::size_t at = 0; at < bytes.size(); at += kRecord) {
    const std::string_view record = std::string_view(bytes).substr(at, kRecord);
    const bool isWhole =
        record.size() == kRecord && record.starts_with(std::string_view("\0\x08", 2));
    const std::string key = isWhole ? CutAtNul(record.substr(2, kField)) : "";
    if (at == 0) {
      findings.locks += !key.empty();
    } else if (!isWhole) {
      ++findings.torn;
    } else if (const auto owner = owners.find(key); owner != owners.end()) {
      const std::string value(record.substr(2 + kField));
      const auto [process, number] = owner->second;
      findings.torn += !IsValueOf(process, number, value);
      // Of records with the same key the first counts.
      findings.twice += !values.try_emplace(key, value).second;
    } else {
      findings.torn += key.starts_with(kOwnKeys);
    }
  }
  for (const auto& [key, owner] : owners) {
    const auto found = values.find(key);
    if (found == values.end()) {
      ++findings.lost;
    } else {
      findings.old += found->second != ValueOf(owner.first, owner.second, round);
    }
  }
  return findings;
}

std::string FileWithKeys(int processes, int keys) {
  std::string bytes("\0\x08", 2);
  bytes.resize(kRecord, '\0');
  for (int process = 0; process < processes; ++process) {
    for (int key = 0; key < keys; ++key) {
      bytes.append("\0\x08", 2).append(Padded(KeyOf(process, key)));
      bytes.append(ValueOf(process, key, 0));
    }
  }
  return bytes;
}

std::string TextOf(const Findings& findings) {
  std::string text = Counted(findings.lost + findings.old) + " lost";
  if (findings.twice > 0) text += ", " + Counted(findings.twice) + " twice";
  if (findings.torn > 0) text += ", " + Counted(findings.torn) + " torn";
  if (findings.locks > 0) text += ", " + Counted(findings.locks) + " locks left";
  return text;
}

}  // namespace tarvo::test
