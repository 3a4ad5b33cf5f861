#include "ctl/table.h"

#include <algorithm>

#include "base/paths.h"
#include "base/text.h"

namespace tarvo {

std::string OneLine(std::string_view text) {
  constexpr char kHexDigits[] = "0123456789abcdef";
  std::string result;
  for (const char c : ValidUtf8(text)) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\\') {
      result += "\\\\";
    } else if (c == '\n') {
      result += "\\n";
    } else if (c == '\t') {
      result += "\\t";
    } else if (byte < 0x20 || byte == 0x7F) {
      result += std::string("\\x") + kHexDigits[byte >> 4] + kHexDigits[byte & 15];
    } else {
      result += c;
    }
  }
  return result;
}

std::string OneLineSentence(std::string_view text) {
  return kSeparator == '\\' ? ReplaceAll(OneLine(text), "\\\\", "\\") : OneLine(text);
}

std::string AlignedTable(const std::vector<std::vector<std::string>>& rows) {
  std::vector<std::size_t> widths;
  for (const auto& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) {
      widths[i] = std::max(widths[i], CharacterCount(row[i]));
    }
  }
  std::string result;
  for (const auto& row : rows) {
    std::string line;
    std::size_t missing = 0;
    for (std::size_t i = 0; i < row.size(); ++i) {
      line.append(missing, ' ').append(row[i]);
      missing = widths[i] - CharacterCount(row[i]) + 2;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    result += line + '\n';
  }
  return result;
}

}  // namespace tarvo
