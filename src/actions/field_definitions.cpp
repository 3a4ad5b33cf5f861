#include "actions/field_definitions.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "actions/replace_file.h"
#include "base/paths.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "platform/names.h"

namespace tarvo {
namespace {

constexpr std::uint64_t kLargestSample = std::uint64_t{1024} * 1024;
constexpr std::size_t kMostDefinitions = std::size_t{2} * 1024 * 1024;
constexpr std::string_view kDescription = "Driver.inf";
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kBlanks = " \t\r\n\v\f";

bool IsWordCharacter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

// What is left of a name when everything up to its last "(" is taken away, and a ")" at the end. A
// "(" that is the name's first character stays.
std::string_view UnitIn(std::string_view name) {
  const std::size_t open = name.rfind('(');
  if (open != 0 && open != std::string_view::npos) name.remove_prefix(open + 1);
  if (name.ends_with(')')) name.remove_suffix(1);
  return name;
}

// The name without what stands between its first "(" and a ")" at its end, and the blanks before
// it. A pair with nothing in it stays.
std::string_view WithoutUnit(std::string_view name) {
  const std::size_t open = name.find('(');
  if (name.ends_with(')') && open + 2 < name.size()) name = name.substr(0, open);
  return name.substr(0, name.find_last_not_of(kBlanks) + 1);
}

std::string WordCharactersOf(std::string_view name) {
  std::string result;
  for (const char c : name) {
    if (IsWordCharacter(c)) result += c;
  }
  return result;
}

// Takes the next line that counts from the front of a text, whatever ends it; nothing when none is
// left. Lines are taken one by one, since a hostile sample has half a million of them.
std::optional<std::string_view> TakeLine(std::string_view& text) {
  while (!text.empty()) {
    const std::size_t end = text.find_first_of(kLineEnd);
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (!line.empty() && line[0] != '#') return line;
  }
  return std::nullopt;
}

// Takes the next field from the front of a line; nothing after the last one.
std::optional<std::string_view> TakeField(std::optional<std::string_view>& line) {
  if (!line) return std::nullopt;
  const std::size_t end = line->find('|');
  const std::string_view field = line->substr(0, end);
  if (end == std::string_view::npos) {
    line.reset();
  } else {
    line->remove_prefix(end + 1);
  }
  return field;
}

// Where the columns stand that are used; npos for one that is missing, which then is empty
// everywhere.
struct Columns {
  std::size_t fieldName = std::string_view::npos;
  std::size_t csvName = std::string_view::npos;
};

Columns ReadHeader(std::optional<std::string_view> line) {
  Columns columns;
  for (std::size_t i = 0; const auto field = TakeField(line); ++i) {
    const std::string name = UpperCase(*field);
    if (name == "FIELDNAME") columns.fieldName = i;
    if (name == "CSVNAME") columns.csvName = i;
  }
  return columns;
}

std::string DefinitionInLine(std::optional<std::string_view> line, const Columns& columns) {
  std::string_view fieldName;
  std::string_view csvName;
  for (std::size_t i = 0; const auto field = TakeField(line); ++i) {
    if (i == columns.fieldName) fieldName = *field;
    if (i == columns.csvName) csvName = *field;
  }
  return FieldDefinition(fieldName, csvName);
}

// Whether a line begins at a place in the file: at its front, and behind every line end.
bool IsStartOfLine(File& file, std::uint64_t at) {
  if (at == 0) return true;
  const std::string before = file.ReadAt(at - 1, 1);
  return before == "\n" || before == "\r";
}

// Whether these lines are the file's last ones; true for none.
bool EndsWithLines(File& file, std::string_view lines) {
  const std::uint64_t size = file.Size();
  if (size < lines.size() || file.ReadAt(size - lines.size(), lines.size()) != lines) return false;
  return lines.empty() || IsStartOfLine(file, size - lines.size());
}

bool CanBeRead(Platform& platform, const std::string& path) {
  try {
    platform.OpenFile(path, OpenFor::kReading);
    return true;
  } catch (const RuntimeError&) {
    return false;  // a link that leads nowhere, a pipe
  }
}

std::string DefinitionsOfFile(Platform& platform, const std::string& sample) {
  const auto file = platform.OpenFile(sample, OpenFor::kReading);
  const std::uint64_t size = file->Size();
  if (size > kLargestSample) throw RuntimeError(kPathFileAccessError);
  return FieldDefinitions(platform, file->ReadAt(0, static_cast<std::size_t>(size)));
}

}  // namespace

std::string FieldDefinition(std::string_view fieldName, std::string_view csvName) {
  std::string_view name = fieldName;
  std::string_view unit;
  if (name.find('(') != std::string_view::npos) {
    unit = UnitIn(name);
    name = WithoutUnit(name);
  }
  const std::string key = csvName.empty() ? WordCharactersOf(name) : std::string(csvName);
  constexpr std::string_view kBetween = "\",\"";
  return std::string("\"")
      .append(UpperCase(key))
      .append(kBetween)
      .append(name)
      .append(kBetween)
      // The column DATATYPE of a sample is not honoured: readers of these lines know texts only.
      .append("TEXT")
      .append(kBetween)
      .append(unit)
      .append("\"");
}

std::string FieldDefinitions(Platform& platform, std::string_view sample) {
  const std::string text = platform.DecodeCodePage(sample);
  std::string_view rest = text;
  TakeLine(rest);
  const auto header = TakeLine(rest);
  if (!header) return {};
  const Columns columns = ReadHeader(header);
  std::string result;
  while (const auto line = TakeLine(rest)) {
    result += DefinitionInLine(line, columns);
    result += kLineEnd;
    if (result.size() > kMostDefinitions) throw RuntimeError(kPathFileAccessError);
  }
  return platform.EncodeCodePage(result);
}

std::string SampleFile(Platform& platform, std::string_view driverFolder) {
  std::vector<std::string> names;
  for (FolderEntry& entry : ListFolder(platform, driverFolder, "*.hvd", kNormal)) {
    names.push_back(std::move(entry.name));
  }
  std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
    const int order = CompareIgnoringCase(a, b);
    return order != 0 ? order < 0 : a < b;
  });
  for (std::string& name : names) {
    if (CanBeRead(platform, JoinPath(driverFolder, name))) return std::move(name);
  }
  return {};
}

std::string DefinitionsWithPackage(Platform& platform, Package& package,
                                   std::string_view driverFolder) {
  const std::string packed = package.FirstRootFile("*.hvd");
  std::string present;
  if (FolderExists(platform, driverFolder)) present = SampleFile(platform, driverFolder);
  const bool isPresentFirst =
      !present.empty() && (packed.empty() || CompareIgnoringCase(present, packed) < 0);
  if (isPresentFirst) return DefinitionsOfFile(platform, JoinPath(driverFolder, present));
  if (packed.empty()) return {};
  return FieldDefinitions(platform, package.ReadRootFile(packed, kLargestSample));
}

bool HasFieldDefinitions(Platform& platform, std::string_view driverFolder) {
  try {
    const std::string sample = SampleFile(platform, driverFolder);
    if (sample.empty()) return false;
    const std::string path = ResolveName(platform, JoinPath(driverFolder, kDescription));
    const auto description = platform.OpenFile(path, OpenFor::kReading);
    return EndsWithLines(*description, DefinitionsOfFile(platform, JoinPath(driverFolder, sample)));
  } catch (const RuntimeError&) {
    return false;
  }
}

void AppendDefinitions(File& description, std::string_view definitions) {
  if (definitions.empty()) return;
  const std::uint64_t end = description.Size();
  const bool needsLineEnd = !IsStartOfLine(description, end);
  if (needsLineEnd) description.WriteAt(end, kLineEnd);
  description.WriteAt(end + (needsLineEnd ? kLineEnd.size() : 0), definitions);
}

void AppendFieldDefinitions(Platform& platform, std::string_view driverFolder) {
  const std::string sample = SampleFile(platform, driverFolder);
  if (sample.empty()) return;
  const std::string lines = DefinitionsOfFile(platform, JoinPath(driverFolder, sample));
  const std::string path = ResolveName(platform, JoinPath(driverFolder, kDescription));
  if (platform.IsLink(path)) throw RuntimeError(kPathFileAccessError);
  // Opened for writing too: a description that may not be written is not replaced either.
  auto description = platform.OpenFile(path, OpenFor::kReadingAndWriting);
  if (EndsWithLines(*description, lines)) return;
  ReplaceFile(platform, path, [&](File& longer) {
    CopyBytes(*description, longer);
    AppendDefinitions(longer, lines);
    description.reset();  // not every drive lets an open file be replaced
  });
}

}  // namespace tarvo
