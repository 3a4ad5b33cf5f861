#include "common/date_text.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <string>
#include <vector>

namespace tarvo {
namespace {

constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// A number as it is written: its value and how many digits it has.
struct Group {
  int value;
  std::size_t digits;
};

// The one to four digits of a text; nothing when it holds anything else.
std::optional<Group> ReadGroup(std::string_view text) {
  if (text.empty() || text.size() > 4 || !std::all_of(text.begin(), text.end(), IsDigit)) {
    return std::nullopt;
  }
  Group group{0, text.size()};
  std::from_chars(text.data(), text.data() + text.size(), group.value);
  return group;
}

// The numbers of a text with `separator` between them; none when anything else stands in it.
std::vector<Group> ReadGroups(std::string_view text, std::string_view separator) {
  std::vector<Group> groups;
  for (;;) {
    const std::size_t end = text.find(separator);
    const auto group = ReadGroup(text.substr(0, end));
    if (!group) return {};
    groups.push_back(*group);
    if (end == std::string_view::npos) return groups;
    text.remove_prefix(end + separator.size());
  }
}

std::optional<int> ReadYear(Group group) {
  if (group.digits == 2) return FullYear(group.value);
  if (group.digits == 4 && group.value >= kFirstYear) return group.value;
  return std::nullopt;
}

bool IsDayOfCalendar(int year, Group month, Group day) {
  using namespace std::chrono;
  if (month.digits > 2 || day.digits > 2) return false;
  return year_month_day(std::chrono::year(year),
                        std::chrono::month(static_cast<unsigned>(month.value)),
                        std::chrono::day(static_cast<unsigned>(day.value)))
      .ok();
}

bool IsDateInOrder(const std::vector<Group>& groups, std::string_view order) {
  const std::size_t day = order.find('D');
  const std::size_t month = order.find('M');
  const std::size_t year = order.find('Y');
  if (std::max({day, month, year}) >= groups.size()) return false;
  const auto fullYear = ReadYear(groups[year]);
  return fullYear && IsDayOfCalendar(*fullYear, groups[month], groups[day]);
}

bool IsMonthAndYear(Group month, Group year) {
  return year.digits == 4 && IsDayOfCalendar(year.value, month, {1, 1});
}

// A day and a month, whichever stands first, or a month and a year. 29 February counts: the year is
// not known.
bool IsDateOfTwo(Group first, Group second) {
  constexpr int kLeapYear = 2000;
  return IsDayOfCalendar(kLeapYear, first, second) || IsDayOfCalendar(kLeapYear, second, first) ||
         IsMonthAndYear(first, second) || IsMonthAndYear(second, first);
}

bool IsDate(std::string_view text, std::string_view order, std::string_view localeSeparator) {
  for (const std::string_view separator :
       {localeSeparator, std::string_view("/"), std::string_view("-"), std::string_view(".")}) {
    if (separator.empty()) continue;
    const std::vector<Group> groups = ReadGroups(text, separator);
    if (groups.size() == 2 && IsDateOfTwo(groups[0], groups[1])) return true;
    if (groups.size() != 3) continue;
    for (const std::string_view tried :
         {order, std::string_view("DMY"), std::string_view("MDY"), std::string_view("YMD")}) {
      if (IsDateInOrder(groups, tried)) return true;
    }
  }
  return false;
}

bool IsTime(std::string_view text) {
  const std::vector<Group> groups = ReadGroups(text, ":");
  if (groups.size() != 2 && groups.size() != 3) return false;
  if (groups[0].digits > 2 || groups[0].value > 23) return false;
  return std::all_of(groups.begin() + 1, groups.end(),
                     [](Group group) { return group.digits <= 2 && group.value <= 59; });
}

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

int FullYear(int twoDigits) { return twoDigits < 30 ? 2000 + twoDigits : 1900 + twoDigits; }

bool IsDateOrTime(std::string_view text, std::string_view order, std::string_view separator) {
  text = Trim(text);
  if (IsTime(text) || IsDate(text, order, separator)) return true;
  const std::size_t blank = text.rfind(' ');
  if (blank == std::string_view::npos) return false;
  return IsTime(text.substr(blank + 1)) && IsDate(Trim(text.substr(0, blank)), order, separator);
}

std::optional<CalendarDate> CalendarDateOf(DateValue value) {
  using namespace std::chrono;
  constexpr sys_days kDayZero = year{1899} / December / 30;
  constexpr sys_days kFirst = year{kFirstYear} / January / 1;
  constexpr sys_days kLast = year{kLastYear} / December / 31;
  const double whole = std::trunc(value.days);
  if (!(whole >= (kFirst - kDayZero).count() && whole <= (kLast - kDayZero).count())) {
    return std::nullopt;
  }
  const year_month_day date(kDayZero + days(static_cast<int>(whole)));
  return CalendarDate{static_cast<int>(date.year()), static_cast<int>(unsigned{date.month()}),
                      static_cast<int>(unsigned{date.day()})};
}

}  // namespace tarvo
