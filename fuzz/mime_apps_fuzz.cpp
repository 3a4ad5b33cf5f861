// "mimeapps.list": reading it, and making an application the default of a type. The input is a byte
// of choices, an application's identifier in a line, and the file.

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "input.h"
#include "platform/linux/key_file.h"
#include "platform/linux/mime_apps_edit.h"
#include "require.h"

namespace tarvo::fuzz {
namespace {

constexpr std::string_view kType = "text/csv";
constexpr std::string_view kDefaults = "Default Applications";
constexpr std::string_view kRemoved = "Removed Associations";

using Lines = std::vector<KeyFileLine>;

bool IsEntryOf(const KeyFileLine& line, std::string_view group) {
  return line.kind == KeyFileLine::Kind::kEntry && line.key == kType && line.group == group;
}

std::string Joined(const Lines& lines) {
  std::string text;
  for (const KeyFileLine& line : lines) text += line.whole;
  return text;
}

// The lines that the edit has nothing to do with, without their ends.
std::vector<std::string_view> OtherLines(const Lines& lines) {
  std::vector<std::string_view> others;
  for (const KeyFileLine& line : lines) {
    if (IsEntryOf(line, kDefaults) || IsEntryOf(line, kRemoved)) continue;
    std::string_view text = line.whole;
    while (text.ends_with('\n') || text.ends_with('\r')) text.remove_suffix(1);
    others.push_back(text);
  }
  return others;
}

bool HasDefault(const Lines& lines) {
  return std::any_of(lines.begin(), lines.end(),
                     [](const KeyFileLine& line) { return IsEntryOf(line, kDefaults); });
}

void CheckReading(std::string_view text) {
  const Lines lines = KeyFileLines(text);
  Require(Joined(lines) == text, "the lines are the text");
  for (const KeyFileLine& line : lines) {
    Require(line.whole.ends_with(line.end), "a line ends with its end");
    Require(line.value.size() + line.key.size() <= line.whole.size(), "an entry lies in its line");
    Require(KeyFileString(line.value).size() <= line.value.size(),
            "escapes are no longer than they say");
    for (const std::string& item : KeyFileList(line.value)) {
      Require(!item.empty() && item.find(';') == item.npos, "an item is a part of the list");
    }
  }
}

void CheckEdit(std::string_view text, std::string_view id, DefaultLine use) {
  const std::string edited = WithDefaultApplication(text, kType, id, use);
  const Lines before = KeyFileLines(text);
  const Lines after = KeyFileLines(edited);
  const std::vector<std::string> wanted{std::string(id)};

  Require(HasDefault(after) == (HasDefault(before) || use == DefaultLine::kAlways),
          "a line is there when there was one or it may be added");
  const std::optional<std::string_view> value = KeyFileValue(after, kDefaults, kType);
  Require(value.has_value() == HasDefault(after), "a reader finds the line");
  Require(!value || KeyFileList(*value) == wanted, "a reader finds the application");
  for (const KeyFileLine& line : after) {
    if (IsEntryOf(line, kDefaults)) {
      Require(KeyFileList(line.value) == wanted,
              "each default of the type is the application alone");
    }
    if (!IsEntryOf(line, kRemoved)) continue;
    const std::vector<std::string> removed = KeyFileList(line.value);
    Require(std::find(removed.begin(), removed.end(), id) == removed.end(), "it is not taken away");
  }

  const auto others = OtherLines(before);
  const auto kept = OtherLines(after);
  const std::size_t added = kept.size() - std::min(kept.size(), others.size());
  Require(
      std::equal(others.begin(), others.end(), kept.begin(),
                 kept.begin() + static_cast<std::ptrdiff_t>(std::min(kept.size(), others.size()))),
      "all other lines stay");
  Require(added <= (use == DefaultLine::kAlways ? 2 : 0), "a group is added at most");
  Require(WithDefaultApplication(edited, kType, id, use) == edited,
          "editing twice is the same as once");
}

void Run(Input input) {
  const auto use = input.Choice(2) == 0 ? DefaultLine::kAlways : DefaultLine::kWhenThereIs;
  std::string id(input.Line());
  const std::string_view text = input.Rest();
  if (!IsDesktopFileId(id)) id = "tarvo.desktop";
  Require(KeyFileList(id + ";") == std::vector<std::string>{id},
          "an identifier is one item of a list");
  CheckReading(text);
  CheckEdit(text, id, use);
}

}  // namespace
}  // namespace tarvo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tarvo::fuzz::Run({data, size});
  return 0;
}
