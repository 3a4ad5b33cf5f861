#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <variant>

#include "platform/platform.h"

namespace tarvo {

// A date and time as days since 30 December 1899, the time of day as the fraction.
struct DateValue {
  double days = 0;
};

// What the number and date helpers take: a text, a number or a date.
using Value = std::variant<std::string, double, DateValue>;

// The general helpers and the values of the user's locale that they work with.
class Library {
 public:
  explicit Library(Platform& platform) : platform_(platform) {}

  // Reads the locale's date order and separators from the platform: 31 December 1999 in the short
  // date form gives the order of "D", "M" and "Y" letters with the separator between them
  // (DatePattern) and the date separator, its first character that is no digit; the decimal sign is
  // the platform's.
  void DetectLocale();

  // For example "DD.MM.YYYY"; before DetectLocale "MM/DD/YYYY".
  const std::string& DatePattern() const { return datePattern_; }
  const std::string& DateSeparator() const { return dateSeparator_; }
  const std::string& DecimalSeparator() const { return decimalSeparator_; }

  // The value as a number. A date becomes year, month and day joined (see NormalizeDateText). In a
  // text the first "." counts as the locale's decimal sign; what is no number as a whole gives its
  // leading number, else 0. Never fails.
  double ToNumber(const Value& value) const;

  // Whether the value is a date; a text only when the locale accepts it as one and its second
  // separator stands beyond the third character, so that "1.5" is a number.
  bool IsDateText(const Value& value) const;

  // Year, month and day of a date text joined without padding, taken apart by the locale's date
  // order; a year of two digits gets its century.
  std::string NormalizeDateText(std::string_view text) const;

  // Makes a folder current, its drive first when the path begins with a drive letter and ":".
  void ChangeToFolder(std::string_view path) const;

  // Waits until the clock of seconds since midnight has passed its present value plus `seconds`,
  // calling `yield` meanwhile. When midnight passes during the wait it goes on until the clock
  // exceeds that value again.
  void Pause(double seconds, const std::function<void()>& yield) const;

 private:
  Platform& platform_;
  std::string datePattern_ = "MM/DD/YYYY";
  std::string dateSeparator_ = "/";
  std::string decimalSeparator_ = ".";
};

}  // namespace tarvo
