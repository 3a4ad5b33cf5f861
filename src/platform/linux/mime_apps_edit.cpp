#include "platform/linux/mime_apps_edit.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "platform/linux/key_file.h"

namespace tarvo {
namespace {

constexpr std::string_view kDefaults = "Default Applications";
constexpr std::string_view kRemoved = "Removed Associations";

std::string Line(std::string_view key, std::string_view list, std::string_view end) {
  return std::string(key) + "=" + std::string(list) + ";" + std::string(end);
}

// A line of a list without one of its items, the others as they stand; nothing when no other is
// left.
std::string WithoutItem(const KeyFileLine& line, std::string_view id) {
  const std::vector<std::string> items = KeyFileList(line.value);
  if (std::find(items.begin(), items.end(), id) == items.end()) return std::string(line.whole);
  std::string rest;
  for (const std::string& item : items) {
    if (item == id) continue;
    if (!rest.empty()) rest += ';';
    rest += item;
  }
  return rest.empty() ? "" : Line(line.key, rest, line.end);
}

// Simple readers see a line only when nothing stands before it.
bool IsPlain(const KeyFileLine& line) {
  const char first = line.whole.front();
  return first != ' ' && first != '\t' && first != '\r' && first != '\f' && first != '\v';
}

// The line behind which the first plain group of that name ends: what follows its last entry may
// belong to the next group.
std::optional<std::size_t> LastLineOfGroup(const std::vector<KeyFileLine>& lines,
                                           std::string_view group) {
  std::optional<std::size_t> last;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const bool isGroup = lines[i].kind == KeyFileLine::Kind::kGroup;
    if (isGroup && last) break;
    if (isGroup && lines[i].group == group && IsPlain(lines[i])) last = i;
    if (last && lines[i].kind == KeyFileLine::Kind::kEntry) last = i;
  }
  return last;
}

// The line end to use beside another line.
std::string_view EndLike(const KeyFileLine& line) {
  return line.end == "\r\n" || line.whole.ends_with('\r') ? "\r\n" : "\n";
}

// Puts a line for the type into `pieces`, the texts of `lines`.
void AddDefault(const std::vector<KeyFileLine>& lines, std::vector<std::string>& pieces,
                std::string_view mimeType, std::string_view id) {
  const std::optional<std::size_t> last = LastLineOfGroup(lines, kDefaults);
  const std::string_view end = lines.empty() ? "\n" : EndLike(last ? lines[*last] : lines.front());
  const auto completeLine = [&](std::size_t index) {
    const bool isLeftOut = pieces[index].empty();
    if (isLeftOut || !lines[index].end.empty()) return;
    pieces[index] += lines[index].whole.ends_with('\r') ? "\n" : end;
  };
  if (last) {
    completeLine(*last);
    pieces[*last] += Line(mimeType, id, end);
    return;
  }
  std::string group;
  if (!lines.empty()) {
    completeLine(lines.size() - 1);
    group += end;
  }
  group += "[" + std::string(kDefaults) + "]" + std::string(end);
  pieces.push_back(group + Line(mimeType, id, end));
}

}  // namespace

bool IsDesktopFileId(std::string_view id) {
  constexpr std::string_view kEnd = ".desktop";
  if (!id.ends_with(kEnd) || id.size() == kEnd.size() || id.front() == ' ') return false;
  return std::none_of(id.begin(), id.end(), [](char letter) {
    return letter == '/' || letter == ';' || letter == '\\' || (letter >= 0 && letter < ' ') ||
           letter == '\x7f';
  });
}

std::string WithDefaultApplication(std::string_view text, std::string_view mimeType,
                                   std::string_view id, DefaultLine use) {
  const std::vector<KeyFileLine> lines = KeyFileLines(text);
  std::vector<std::string> pieces;
  pieces.reserve(lines.size() + 1);
  bool isWritten = false;
  bool isInPlainGroup = false;
  for (const KeyFileLine& line : lines) {
    if (line.kind == KeyFileLine::Kind::kGroup) isInPlainGroup = IsPlain(line);
    const bool isOfType = line.kind == KeyFileLine::Kind::kEntry && line.key == mimeType;
    if (isOfType && line.group == kDefaults) {
      pieces.push_back(Line(mimeType, id, line.end));
      isWritten = isWritten || isInPlainGroup;
    } else if (isOfType && line.group == kRemoved) {
      pieces.push_back(WithoutItem(line, id));
    } else {
      pieces.emplace_back(line.whole);
    }
  }
  if (!isWritten && use == DefaultLine::kAlways) AddDefault(lines, pieces, mimeType, id);
  std::string result;
  for (const std::string& piece : pieces) result += piece;
  return result;
}

}  // namespace tarvo
