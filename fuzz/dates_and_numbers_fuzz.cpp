// Dates and numbers as texts and as values. The input is a byte that chooses the locale, eight
// bytes of a number, and a text.

#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

#include "base/numbers.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "common/date_text.h"
#include "common/library.h"
#include "input.h"
#include "memory_platform.h"
#include "require.h"

namespace tarvo::fuzz {
namespace {

// A locale: the parts of a date in their order, what stands between them, and the decimal sign.
struct Locale {
  std::string_view order;
  std::string_view separator;
  std::string_view decimalSign;
};

constexpr Locale kLocales[] = {
    {"MDY", "/", "."}, {"DMY", ".", ","}, {"YMD", "-", "."},      {"DMY", "/", ","},
    {"DMY", "-", ","}, {"YMD", ".", ","}, {"YMD", "\u5E74", "."}, {"DMY", ". ", ","},
};

class LocalPlatform final : public MemoryPlatform {
 public:
  explicit LocalPlatform(const Locale& locale) : locale_(locale) {
    decimalSign = locale.decimalSign;
  }

  std::string ShortDate(CalendarDate date) override {
    std::string text;
    for (const char part : locale_.order) {
      if (!text.empty()) text += locale_.separator;
      text += std::to_string(part == 'D' ? date.day : part == 'M' ? date.month : date.year);
    }
    return text;
  }

 private:
  const Locale& locale_;
};

struct Place {
  explicit Place(const Locale& chosen) : locale(chosen), platform(chosen), library(platform) {
    library.DetectLocale();
  }
  const Locale& locale;
  LocalPlatform platform;
  Library library;
};

Place& PlaceOf(unsigned number) {
  static std::array<Place, 8> places{Place(kLocales[0]), Place(kLocales[1]), Place(kLocales[2]),
                                     Place(kLocales[3]), Place(kLocales[4]), Place(kLocales[5]),
                                     Place(kLocales[6]), Place(kLocales[7])};
  return places[number % places.size()];
}

bool IsSame(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

// The longest front of a text that is a number, as the C library reads it: no hexadecimal numbers,
// no names.
double ReadByLibrary(std::string_view text) {
  const std::size_t start = text.find_first_not_of(" \t\r\n");
  if (start == text.npos) return 0;
  text.remove_prefix(start);
  const std::size_t end = text.find_first_not_of("0123456789+-.eE");
  const std::string plain(text.substr(0, end));
  return std::strtod(plain.c_str(), nullptr);
}

void CheckNumberText(std::string_view text, std::string_view sign) {
  Require(IsSame(LeadingNumber(text), ReadByLibrary(text)), "a leading number is what it says");
  double value = 0;
  const bool isNumber = ReadNumber(text, sign, value);
  double padded = 0;
  const std::string blanks = " \t" + std::string(text) + "\r\n ";
  Require(ReadNumber(blanks, sign, padded) == isNumber, "blanks around a number do not matter");
  if (!isNumber) return;
  Require(IsSame(value, padded), "blanks around a number do not change it");
  std::string plain(text);
  const std::size_t at = plain.find(sign);
  if (at != plain.npos) plain.replace(at, sign.size(), ".");
  Require(IsSame(value, LeadingNumber(plain)), "a whole number is its own front");
}

void CheckNumber(double number, std::string_view sign) {
  constexpr double kLargest = 1e300;
  if (!(std::abs(number) <= kLargest)) return;
  const std::string text = NumberText(number, sign);
  double value = 0;
  Require(ReadNumber(text, sign, value), "a written number is read");
  Require(std::abs(value - number) <= std::abs(number) * 1e-14 + 1e-320, "15 digits are kept");
  Require(NumberText(value, sign) == text, "what is read is written alike");
  constexpr std::size_t kLongest = 22;  // "-1.23456789012345E-308"
  Require(text.size() <= kLongest, "15 digits are no longer than they must be");

  bool isInteger = true;
  try {
    Require(std::abs(ToInteger(number) - number) <= 0.5, "a whole number is the nearest");
  } catch (const RuntimeError& error) {
    isInteger = false;
    Require(error.Number() == kOverflow, "too large a number is error 6");
  }
  Require(isInteger == (number >= -32768.5 && number < 32767.5), "all that fit are converted");
  if (std::abs(number) <= std::numeric_limits<float>::max()) {
    const std::string single = SingleText(ToSingle(number), sign);
    Require(ReadNumber(single, sign, value), "a written single number is read");
  }
}

// The day's number since 30 December 1899, counted by years, months and days.
long DayNumber(const CalendarDate& date) {
  constexpr std::array<int, 12> kDaysBefore{0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
  const long past = date.year - 1;
  const bool isLeap = (date.year % 4 == 0 && date.year % 100 != 0) || date.year % 400 == 0;
  const long inYear = kDaysBefore[static_cast<std::size_t>(date.month - 1)] + date.day - 1 +
                      (isLeap && date.month > 2 ? 1 : 0);
  constexpr long kDayZero = 693593;
  return past * 365 + past / 4 - past / 100 + past / 400 + inYear - kDayZero;
}

// A time of the day counts alone and behind a date; hours and minutes that are none do not.
void CheckTime(const Place& place, const std::string& date, int hour, int minute) {
  const std::string time = std::to_string(hour) + ":" + std::to_string(minute);
  const bool isTime = hour <= 23 && minute <= 59;
  for (const std::string& tried :
       {time, time + ":59", date + " " + time, date + "  " + time + ":0"}) {
    Require(IsDateOrTime(tried, place.locale.order, place.locale.separator) == isTime,
            "a time of the day is a time");
  }
}

void CheckDate(Place& place, double days) {
  const auto date = CalendarDateOf(DateValue{days});
  const bool isInCalendar = days > -657435 && days < 2958466;
  Require(date.has_value() == isInCalendar, "just the years 100 to 9999 are in the calendar");
  Require(place.library.IsDateText(DateValue{days}) == isInCalendar,
          "a day of the calendar is a date");
  if (!date) return;
  Require(DayNumber(*date) == static_cast<long>(std::trunc(days)), "a date is its day");
  // Of a separator of several characters only the first counts, and the others stay in the parts.
  if (CharacterCount(place.locale.separator) != 1) return;
  const std::string text = place.platform.ShortDate(*date);
  const std::string joined =
      std::to_string(date->year) + std::to_string(date->month) + std::to_string(date->day);
  Require(place.library.ToNumber(DateValue{days}) == std::stod(joined),
          "a date is its parts joined");
  // Years of three digits are no text that counts.
  if (date->year < 1000) return;
  Require(place.library.IsDateText(text), "a date in the locale's form is one");
  CheckTime(place, text, date->day, date->month + 47);
  Require(place.library.NormalizeDateText(text) == joined, "its text gives the same parts");
  Require(place.library.ToNumber(text) == std::stod(joined), "its text is the same number");
}

void CheckDateText(const Place& place, std::string_view text) {
  const std::string_view order = place.locale.order;
  const std::string_view separator = place.locale.separator;
  const bool isDate = IsDateOrTime(text, order, separator);
  Require(IsDateOrTime("  " + std::string(text) + " ", order, separator) == isDate,
          "blanks around a date do not matter");
  const bool isDateText = place.library.IsDateText(std::string(text));
  Require(!isDateText || isDate, "a date text is a date");
  if (isDate) {
    constexpr std::string_view kInDates = "0123456789 :/-.";
    for (const char letter : ReplaceAll(text, separator, "")) {
      Require(kInDates.find(letter) != kInDates.npos, "dates and times are numeric");
    }
    Require(text.size() <= 4096, "a date has an end");
  }
  Require(!std::isnan(place.library.ToNumber(std::string(text))), "every text is a number");
  const std::string normal = place.library.NormalizeDateText(text);
  Require(normal.size() <= text.size() + 2,
          "a date's parts are no longer than it, but for the century");
}

void Run(Input input) {
  Place& place = PlaceOf(input.Byte());
  double number = 0;
  const std::string_view bytes = input.Bytes(sizeof number);
  std::memcpy(&number, bytes.data(), bytes.size());
  const std::string_view text = input.Rest();
  CheckNumberText(text, place.locale.decimalSign);
  CheckDateText(place, text);
  CheckNumber(number, place.locale.decimalSign);
  CheckNumber(std::fmod(number, 70000), place.locale.decimalSign);
  CheckDate(place, number);
  CheckDate(place, std::fmod(number, 3000000));
}

}  // namespace
}  // namespace tarvo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tarvo::fuzz::Run({data, size});
  return 0;
}
