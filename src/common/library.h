#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "common/value.h"
#include "platform/platform.h"

namespace tarvo {

// The general helpers and the values of the user's locale that they work with.
class Library {
 public:
  explicit Library(Platform& platform) : platform_(platform) {}

  // Reads the locale's date order and separators from the platform. 31 December 1999 in the short
  // date form gives the order of day, month and year and, in its first character that is no digit,
  // the date separator; a form that lacks one of them leaves order and separator as they were. The
  // decimal sign is the platform's.
  void DetectLocale();

  // The locale's date order: one letter each for day ("D"), month ("M") and year ("Y") with the
  // date separator between them, for example "D.M.Y". "M/D/Y" before DetectLocale.
  const std::string& DatePattern() const { return datePattern_; }
  const std::string& DateSeparator() const { return dateSeparator_; }
  const std::string& DecimalSeparator() const { return decimalSeparator_; }

  // The value as a number. A date becomes year, month and day joined (see NormalizeDateText). In a
  // text the first "." counts as the locale's decimal sign; what is then no number as a whole gives
  // the value of its leading number, in which only "." is a decimal sign, else 0. Never fails.
  double ToNumber(const Value& value) const;

  // Whether the value is a date; a number never is. A text counts only when it is a date or time
  // (see common/date_text.h) with two separators, the second beyond the third character, so that
  // "1.5" is a number. Where the locale's separator does not stand twice, "/" is looked for.
  bool IsDateText(const Value& value) const;

  // Year, month and day of a date text joined without padding, taken apart by the locale's date
  // order and separator alone: "3/4/2024" in day-month-year order gives "202443". A year of two
  // digits gets its century (see FullYear).
  std::string NormalizeDateText(std::string_view text) const;

  // Makes a folder current, its drive first when the second character of the path is ":". Errors
  // are those of Platform::ChangeCurrentFolder.
  void ChangeToFolder(std::string_view path) const;

  // Waits until the clock of seconds since midnight has passed its present value plus `seconds`,
  // calling `yield` meanwhile, at least once. When midnight passes during the wait it goes on until
  // the clock exceeds that value again.
  void Pause(double seconds, const std::function<void()>& yield) const;

 private:
  double NumberOfText(std::string text) const;
  std::string DateOrder() const;

  Platform& platform_;
  std::string datePattern_ = "M/D/Y";
  std::string dateSeparator_ = "/";
  std::string decimalSeparator_ = ".";
};

}  // namespace tarvo
