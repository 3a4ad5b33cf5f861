#include "tools/data_texts.h"

#include <algorithm>

#include "base/text.h"

namespace tarvo::tools {

namespace {

constexpr const char* kLineEnd = "\r\n";

std::string HeadingOf(const Field& field) {
  return field.unit.empty() ? field.name : field.name + " (" + field.unit + ")";
}

std::string CsvValue(const std::string& value) {
  if (value.find_first_of(",\"\r\n") == std::string::npos) return value;
  return '"' + ReplaceAll(value, "\"", "\"\"") + '"';
}

std::string CsvText(const DeviceLog& log) {
  std::string text = "Date,Time";
  for (const Field& field : log.description.fields) text += "," + CsvValue(HeadingOf(field));
  text += kLineEnd;
  for (const Reading& reading : log.readings) {
    text += reading.date + "," + reading.time;
    for (const std::string& value : reading.values) text += "," + CsvValue(value);
    text += kLineEnd;
  }
  return text;
}

std::string AlignedRight(const std::string& value, std::size_t width) {
  const std::size_t size = CharacterCount(value);
  return std::string(width > size ? width - size : 0, ' ') + value;
}

std::string Columns(const DeviceLog& log, bool headings) {
  std::vector<std::size_t> widths;
  std::string text = headings ? "  DATE        TIME " : "";
  for (const Field& field : log.description.fields) {
    const std::string heading = field.unit.empty() ? field.key : field.key + "/" + field.unit;
    widths.push_back(std::max<std::size_t>(CharacterCount(heading), 16) + 2);
    if (headings) text += AlignedRight(heading, widths.back());
  }
  if (headings) text += kLineEnd;
  for (const Reading& reading : log.readings) {
    text += "  " + reading.date + "  " + reading.time;
    for (std::size_t i = 0; i < reading.values.size(); ++i) {
      text += AlignedRight(reading.values[i], widths[i]);
    }
    text += kLineEnd;
  }
  return text;
}

std::string AscText(const DeviceLog& log) {
  const std::string day = log.readings.empty() ? "" : log.readings.back().date;
  return UpperCase(log.driver) + " " + log.description.model + "  SERIAL " +
         log.description.serial + kLineEnd + "LOG OF " + day + kLineEnd + kLineEnd +
         Columns(log, true);
}

std::string TxtText(const DeviceLog& log) {
  const std::string place = log.site.empty() ? "" : ", " + log.site;
  std::string text = log.driver + " " + log.description.model + place + kLineEnd + "Readings";
  for (const Field& field : log.description.fields) text += "; " + HeadingOf(field);
  return text + kLineEnd + kLineEnd + Columns(log, false);
}

std::string HvdText(const DeviceLog& log) {
  std::string text = "# Last values of the device." + std::string(kLineEnd) + log.driver + " " +
                     log.description.model + kLineEnd + "FIELDNAME|VISIBLE|CSVNAME|DATATYPE|VALUE" +
                     kLineEnd;
  for (std::size_t i = 0; i < log.description.fields.size(); ++i) {
    const Field& field = log.description.fields[i];
    text += HeadingOf(field) + "|1|" + field.key + "|TEXT|";
    if (!log.readings.empty()) text += log.readings.back().values[i];
    text += kLineEnd;
  }
  return text;
}

}  // namespace

std::string_view ExtensionOf(FileKind kind) {
  switch (kind) {
    case FileKind::kCsv:
      return "csv";
    case FileKind::kAsc:
      return "asc";
    case FileKind::kTxt:
      return "txt";
    case FileKind::kHvd:
      break;
  }
  return "hvd";
}

std::string DataText(FileKind kind, const DeviceLog& log) {
  switch (kind) {
    case FileKind::kCsv:
      return CsvText(log);
    case FileKind::kAsc:
      return AscText(log);
    case FileKind::kTxt:
      return TxtText(log);
    case FileKind::kHvd:
      break;
  }
  return HvdText(log);
}

}  // namespace tarvo::tools
