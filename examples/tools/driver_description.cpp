#include "tools/driver_description.h"

#include <array>
#include <optional>
#include <utility>

#include "base/text.h"

namespace tarvo::tools {

namespace {

constexpr std::array<std::pair<std::string_view, FileKind>, 4> kKinds{{
    {"CSV", FileKind::kCsv},
    {"ASC", FileKind::kAsc},
    {"TXT", FileKind::kTxt},
    {"HVD", FileKind::kHvd},
}};

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

// The parts of a text between separators, at least one.
std::vector<std::string_view> Parts(std::string_view text, std::string_view separator) {
  std::vector<std::string_view> parts;
  for (std::size_t end = 0; (end = text.find(separator)) != std::string_view::npos;) {
    parts.push_back(text.substr(0, end));
    text.remove_prefix(end + separator.size());
  }
  parts.push_back(text);
  return parts;
}

std::vector<FileKind> ReadKinds(std::string_view text) {
  std::vector<FileKind> kinds;
  for (const std::string_view part : Parts(text, ",")) {
    for (const auto& [name, kind] : kKinds) {
      if (EqualIgnoringCase(Trimmed(part), name)) kinds.push_back(kind);
    }
  }
  return kinds;
}

// A line of four values in double quotes: key, name, type and unit.
std::optional<Field> ReadField(std::string_view line) {
  if (line.size() < 2 || line.front() != '"' || line.back() != '"') return std::nullopt;
  const auto values = Parts(line.substr(1, line.size() - 2), "\",\"");
  if (values.size() != 4) return std::nullopt;
  return Field{std::string(values[0]), std::string(values[1]), std::string(values[3])};
}

void ReadEntry(std::string_view section, std::string_view line, DriverDescription& description) {
  const std::size_t sign = line.find('=');
  if (sign == std::string_view::npos) return;
  const std::string entry = LowerCase(section) + "/" + LowerCase(Trimmed(line.substr(0, sign)));
  const std::string_view value = Trimmed(line.substr(sign + 1));
  if (entry == "driver/model") description.model = value;
  if (entry == "driver/version") description.version = value;
  if (entry == "device/serial") description.serial = value;
  if (entry == "device/files") description.files = ReadKinds(value);
}

}  // namespace

DriverDescription ReadDescription(std::string_view text) {
  DriverDescription description;
  std::string_view section;
  for (const std::string_view raw : Parts(text, "\n")) {
    const std::string_view line = Trimmed(raw);
    if (line.size() >= 2 && line.front() == '[' && line.back() == ']') {
      section = Trimmed(line.substr(1, line.size() - 2));
    } else if (EqualIgnoringCase(section, "Fields")) {
      if (auto field = ReadField(line)) description.fields.push_back(std::move(*field));
    } else {
      ReadEntry(section, line, description);
    }
  }
  if (description.files.empty()) description.files.push_back(FileKind::kCsv);
  return description;
}

}  // namespace tarvo::tools
