#include "platform/linux/key_file.h"

#include <algorithm>

namespace tarvo {
namespace {

std::string_view WithoutBlanks(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\f\v";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string_view LineEnd(std::string_view line) {
  std::size_t size = 0;
  if (line.ends_with("\r\n")) {
    size = 2;
  } else if (line.ends_with('\n')) {
    size = 1;
  }
  return line.substr(line.size() - size);
}

KeyFileLine ReadLine(std::string_view whole, std::string_view group) {
  KeyFileLine line;
  line.whole = whole;
  line.end = LineEnd(whole);
  line.group = group;
  const std::string_view text = WithoutBlanks(whole.substr(0, whole.size() - line.end.size()));
  if (text.starts_with('[')) {
    line.kind = KeyFileLine::Kind::kGroup;
    line.group = text.find(']') == text.size() - 1 ? text.substr(1, text.size() - 2) : "";
    return line;
  }
  const std::size_t sign = text.find('=');
  if (text.starts_with('#') || sign == std::string_view::npos) return line;
  line.kind = KeyFileLine::Kind::kEntry;
  line.key = WithoutBlanks(text.substr(0, sign));
  line.value = WithoutBlanks(text.substr(sign + 1));
  return line;
}

}  // namespace

std::vector<KeyFileLine> KeyFileLines(std::string_view text) {
  std::vector<KeyFileLine> lines;
  lines.reserve(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1);
  std::string_view group;
  while (!text.empty()) {
    const std::size_t size = std::min(text.find('\n'), text.size() - 1) + 1;
    lines.push_back(ReadLine(text.substr(0, size), group));
    group = lines.back().group;
    text.remove_prefix(size);
  }
  return lines;
}

std::optional<std::string_view> KeyFileValue(const std::vector<KeyFileLine>& lines,
                                             std::string_view group, std::string_view key) {
  std::optional<std::string_view> value;
  for (const KeyFileLine& line : lines) {
    const bool isEntry = line.kind == KeyFileLine::Kind::kEntry;
    if (isEntry && line.group == group && line.key == key) value = line.value;
  }
  return value;
}

std::string KeyFileString(std::string_view value) {
  constexpr std::string_view kLetters = "sntr\\";
  constexpr std::string_view kMeanings = " \n\t\r\\";
  std::string text;
  text.reserve(value.size());
  for (std::size_t i = 0; i < value.size(); ++i) {
    const std::size_t escape =
        value[i] == '\\' && i + 1 < value.size() ? kLetters.find(value[i + 1]) : kLetters.npos;
    if (escape != kLetters.npos) {
      text += kMeanings[escape];
      ++i;
    } else {
      text += value[i];
    }
  }
  return text;
}

std::vector<std::string> KeyFileList(std::string_view value) {
  std::vector<std::string> items;
  while (!value.empty()) {
    const std::size_t size = std::min(value.find(';'), value.size());
    const std::string_view item = WithoutBlanks(value.substr(0, size));
    if (!item.empty()) items.emplace_back(item);
    value.remove_prefix(std::min(size + 1, value.size()));
  }
  return items;
}

}  // namespace tarvo
