// The "*.hvd" header and the field definitions that are built from it. The input is a length, a
// description of that length, and the sample.

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "actions/field_definitions.h"
#include "base/code_page.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "input.h"
#include "memory_platform.h"
#include "require.h"

namespace tarvo::fuzz {
namespace {

constexpr std::string_view kFolder = "/driver";
constexpr std::string_view kDescription = "/driver/Driver.inf";

using Texts = std::vector<std::string>;

// The parts of a text between separators, at least one.
Texts Split(std::string_view text, std::string_view separators) {
  Texts parts;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t end = std::min(text.find_first_of(separators, start), text.size());
    parts.emplace_back(text.substr(start, end - start));
    start = end + 1;
  }
  return parts;
}

// The lines that count.
Texts LinesOf(std::string_view sample) {
  Texts lines;
  for (std::string& line : Split(sample, "\r\n")) {
    if (!line.empty() && line[0] != '#') lines.push_back(std::move(line));
  }
  return lines;
}

// The field of the last column with that name; "" without one.
std::string FieldUnder(const Texts& header, const Texts& fields, std::string_view name) {
  std::string found;
  for (std::size_t i = 0; i < header.size(); ++i) {
    if (UpperCase(header[i]) == name) found = i < fields.size() ? fields[i] : "";
  }
  return found;
}

// The definitions of a sample, with everything taken apart first.
std::string Expected(std::string_view sample) {
  const Texts lines = LinesOf(DecodeWindows1252(sample));
  if (lines.size() < 2) return {};
  const Texts header = Split(lines[1], "|");
  std::string result;
  for (std::size_t i = 2; i < lines.size(); ++i) {
    const Texts fields = Split(lines[i], "|");
    result += FieldDefinition(FieldUnder(header, fields, "FIELDNAME"),
                              FieldUnder(header, fields, "CSVNAME"));
    result += "\r\n";
  }
  return EncodeWindows1252(result);
}

// What holds for the definition of any name.
void CheckDefinition(std::string_view fieldName, std::string_view csvName) {
  const std::string definition = FieldDefinition(fieldName, csvName);
  Require(definition.starts_with('"') && definition.ends_with('"'), "a definition is quoted");
  Require(definition.find("\",\"TEXT\",\"") != definition.npos, "the type is text");
  const bool hasUnit = fieldName.find('(') != fieldName.npos;
  if (!hasUnit) {
    const std::string end = "\"" + std::string(fieldName) + "\",\"TEXT\",\"\"";
    Require(definition.ends_with(end), "a name without a unit stands as it is");
  }
  if (!csvName.empty()) {
    Require(definition.starts_with("\"" + UpperCase(csvName) + "\",\""), "a given key is the key");
  }
  constexpr std::size_t kQuotesAndType = 17;
  Require(definition.size() <= kQuotesAndType + 3 * (fieldName.size() + csvName.size()),
          "a definition is no longer than what it is made of");
}

// Appends to a description, twice, and looks at it.
void CheckAppending(std::string_view description, bool isThere, std::string_view sample,
                    const std::optional<std::string>& definitions) {
  MemoryPlatform platform;
  platform.MakeFolder(kFolder);
  platform.PutFile("/driver/a.hvd", sample);
  if (isThere) platform.PutFile(kDescription, description);
  try {
    AppendFieldDefinitions(platform, kFolder);
  } catch (const RuntimeError& error) {
    Require(!definitions && error.Number() == kPathFileAccessError, "only too much is refused");
    if (isThere) Require(platform.ContentOf(kDescription) == description, "what is refused stays");
    return;
  }
  Require(definitions.has_value(), "too much is refused");
  const std::string text = platform.ContentOf(kDescription);
  Require(text.starts_with(isThere ? description : ""), "a description keeps what it holds");
  Require(text.ends_with(*definitions), "the definitions are the last lines");
  Require(text.size() <= description.size() + 2 + definitions->size(), "nothing else is added");
  Require(HasFieldDefinitions(platform, kFolder), "the definitions are found again");
  AppendFieldDefinitions(platform, kFolder);
  Require(platform.ContentOf(kDescription) == text, "they are not appended twice");
  Require(platform.Entries(kFolder).size() == 2, "nothing is left behind");
}

void Run(Input input) {
  const unsigned size = input.Byte();
  const std::string_view description = input.Bytes(size / 2);
  const bool isThere = size % 2 == 0;
  const std::string_view sample = input.Rest();
  static MemoryPlatform platform;

  std::optional<std::string> definitions;
  try {
    definitions = FieldDefinitions(platform, sample);
    Require(*definitions == Expected(sample), "every line that counts gives its definition");
  } catch (const RuntimeError& error) {
    Require(error.Number() == kPathFileAccessError, "only too many definitions are refused");
    constexpr std::size_t kMost = std::size_t{2} * 1024 * 1024;
    Require(Expected(sample).size() > kMost, "no fewer definitions are refused");
  }
  const std::string text = DecodeWindows1252(sample);
  const std::size_t middle = text.size() / 2;
  CheckDefinition(std::string_view(text).substr(0, middle), std::string_view(text).substr(middle));
  CheckDefinition(text, "");
  CheckAppending(description, isThere, sample, definitions);
}

}  // namespace
}  // namespace tarvo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tarvo::fuzz::Run({data, size});
  return 0;
}
