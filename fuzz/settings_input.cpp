#include "settings_input.h"

#include <algorithm>
#include <iterator>

#include "base/numbers.h"
#include "settings_model.h"

namespace tarvo::fuzz {
namespace {

constexpr std::string_view kWhole{"\0\x08", 2};  // the length of a record's text

std::string Record(std::string_view length, std::string_view key, std::string_view value) {
  std::string record(length);
  record += key.substr(0, 1024);
  record.resize(1026);
  record += value.substr(0, 1024);
  record.resize(SettingsModel::kRecord);
  return record;
}

// The input is taken statement by statement: compilers differ in the order of operands.
std::string SomeRecord(Input& input, Platform& platform) {
  const unsigned kind = input.Choice(16);
  if (kind == 0) return Record(kWhole, "", "");
  if (kind == 2) {  // both fields without a NUL
    const std::string key(1024, static_cast<char>(input.Byte()));
    return Record(kWhole, key, std::string(1024, 'v'));
  }
  std::string_view length = kWhole;
  if (kind == 3) {  // not that of the text: nobody looks at it
    const std::string_view other = input.Bytes(2);
    if (other.size() == 2) length = other;
  }
  std::string key;
  if (kind == 4) {  // empty by its first byte, but not by the others
    const unsigned size = input.Choice(20);
    key = std::string(1, '\0').append(input.Bytes(size));
  } else {
    key = platform.EncodeCodePage(SomeKey(input));
  }
  if (kind == 1) {
    const unsigned number = input.Choice(6);
    key += "~" + std::to_string(number);
  }
  return Record(length, key, platform.EncodeCodePage(SomeValue(input)));
}

}  // namespace

double TickingPlatform::SecondsSinceMidnight() {
  const double now = secondsOfDay;
  secondsOfDay += kSecondsPerLook;
  if (secondsOfDay >= 86400) {
    secondsOfDay -= 86400;
    day += 1;
  }
  if (++looks_ == kPatience) {
    std::string& bytes = ContentOf(kSettingsFile);
    bytes.replace(0, SettingsModel::kRecord, EmptyLock());
  }
  return now;
}

std::string EmptyLock() { return Record(kWhole, "", ""); }

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

std::string SomeValue(Input& input) {
  static const std::string kShort[] = {"", "1", "2", "\u00E9", "\u2192", std::string("a\0b", 3)};
  const unsigned choice = input.Choice(16);
  if (choice < std::size(kShort)) return kShort[choice];
  return std::string(input.Bytes(choice));
}

std::string LongValue(Input& input) {
  static const std::string kLong[] = {std::string(1023, 'a'), std::string(1024, 'b'),
                                      std::string(1025, 'c'), std::string(2049, 'd'),
                                      std::string(1023, 'e') + "\u20ACf"};
  return kLong[input.Choice(std::size(kLong))];
}

std::string SomeLock(Input& input, Platform& platform) {
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
      return EmptyLock();
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

}  // namespace tarvo::fuzz
