#pragma once

#include <optional>
#include <string_view>

#include "common/value.h"
#include "platform/platform.h"

namespace tarvo {

// What counts as a date, decided here and not by the system's C library, so that every system and
// every test agrees. All of it is numeric; names of months do not count.

// The year that a year of two digits stands for: 0 to 29 are 2000 to 2029, 30 to 99 are 1930 to
// 1999.
int FullYear(int twoDigits);

// Whether a text is a date, a time, or a date and a time behind a blank.
//
// A date is two or three numbers with the same separator between them: the locale's, "/", "-" or
// ".". Three numbers are day, month and year in the locale's order, or in another usual order (DMY,
// MDY, YMD) when the locale's gives no day of the calendar but that one does; the year has two or
// four digits, so that the version "1.2.3" is no date. Two numbers are a day and a month, or a
// month and a year of four digits. A time is h:mm or h:mm:ss.
//
// `order` holds the letters "D", "M" and "Y" in the locale's order.
bool IsDateOrTime(std::string_view text, std::string_view order, std::string_view separator);

// The day of a date value; nothing outside the years 100 to 9999. Before 30 December 1899 the
// fraction still counts forward from midnight.
std::optional<CalendarDate> CalendarDateOf(DateValue value);

}  // namespace tarvo
