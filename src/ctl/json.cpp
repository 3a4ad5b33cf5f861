#include "ctl/json.h"

#include "base/text.h"

namespace tarvo {
namespace {

std::string EscapedControl(unsigned char c) {
  constexpr char kHexDigits[] = "0123456789abcdef";
  return std::string("\\u00") + kHexDigits[c >> 4] + kHexDigits[c & 15];
}

}  // namespace

std::string JsonString(std::string_view text) {
  std::string result = "\"";
  for (const char c : ValidUtf8(text)) {
    if (c == '"' || c == '\\') {
      result += '\\';
      result += c;
    } else if (c == '\n') {
      result += "\\n";
    } else if (c == '\t') {
      result += "\\t";
    } else if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
      result += EscapedControl(static_cast<unsigned char>(c));
    } else {
      result += c;
    }
  }
  return result + '"';
}

std::string JsonTable(const std::vector<std::vector<std::string>>& rows) {
  std::string result = "[";
  for (std::size_t row = 1; row < rows.size(); ++row) {
    result += row == 1 ? "\n  {" : ",\n  {";
    for (std::size_t column = 0; column < rows[row].size(); ++column) {
      if (column > 0) result += ", ";
      result += JsonString(rows[0][column]) + ": " + JsonString(rows[row][column]);
    }
    result += "}";
  }
  return result + (rows.size() > 1 ? "\n]\n" : "]\n");
}

}  // namespace tarvo
