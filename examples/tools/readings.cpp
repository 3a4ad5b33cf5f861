#include "tools/readings.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <string_view>

#include "common/date_text.h"

namespace tarvo::tools {

namespace {

constexpr int kMinutesPerDay = 1440;

struct Quantity {
  std::string_view keyPart;  // the first row whose part the field's key holds counts
  double middle;
  double swing;
  double periodInHours;
  int decimals;
};

constexpr std::array<Quantity, 8> kQuantities{{
    {"BATTERY", 9.1, 0.1, 24, 2},
    {"VOLTAGE", 230, 2.5, 5, 1},
    {"TEMPERATURE", 14, 4, 24, 1},
    {"LEVEL", 3.1, 2.2, 12.42, 2},
    {"LOOP", 13.4, 0.6, 7, 2},
    {"HUMIDITY", 66, 9, 24, 0},
    {"RATE", 20, 5, 9, 1},
    {"", 50, 10, 6, 1},
}};

std::int64_t MinutesOf(double moment) {
  // A whole minute may come out of the arithmetic of days a little short of itself.
  return static_cast<std::int64_t>(std::floor(moment * kMinutesPerDay + 1e-4));
}

std::string Measured(const Quantity& quantity, double moment) {
  const double turns = moment * 24 / quantity.periodInHours;
  // A second, unrelated wave stands for what disturbs a measurement.
  const double wave = std::sin(2 * std::numbers::pi * turns) + 0.1 * std::sin(moment * 4000);
  char text[32];
  std::snprintf(text, sizeof text, "%.*f", quantity.decimals,
                quantity.middle + quantity.swing * wave);
  return text;
}

std::string ValueOf(const Field& field, double moment, int number) {
  if (field.key == "RECNO") return std::to_string(number);
  if (field.key == "DATEANDTIME") return DateText(moment) + " " + TimeText(moment);
  if (field.key == "STATUS") return "OK";
  if (field.key == "REMARK") return "";
  std::size_t row = 0;
  while (field.key.find(kQuantities[row].keyPart) == std::string::npos) ++row;
  return Measured(kQuantities[row], moment);
}

}  // namespace

std::string DateText(double moment) {
  const double minutes = static_cast<double>(MinutesOf(moment));
  const auto date = CalendarDateOf({std::floor(minutes / kMinutesPerDay)});
  if (!date) return "0000-00-00";
  char text[48];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d", date->year, date->month, date->day);
  return text;
}

std::string TimeText(double moment) {
  const int minute = static_cast<int>(MinutesOf(moment) % kMinutesPerDay);
  char text[32];
  std::snprintf(text, sizeof text, "%02d:%02d", minute / 60, minute % 60);
  return text;
}

Reading Measure(const std::vector<Field>& fields, double moment, int number) {
  Reading reading{DateText(moment), TimeText(moment), {}};
  for (const Field& field : fields) reading.values.push_back(ValueOf(field, moment, number));
  return reading;
}

}  // namespace tarvo::tools
