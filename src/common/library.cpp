#include "common/library.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "base/numbers.h"
#include "base/text.h"
#include "common/date_text.h"
#include "platform/names.h"

namespace tarvo {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string_view FirstNonDigit(std::string_view text) {
  const auto found = std::find_if_not(text.begin(), text.end(), IsDigit);
  return FirstCharacter(text.substr(static_cast<std::size_t>(found - text.begin())));
}

// The byte offsets of the first two occurrences of a separator, npos for one that is missing.
std::array<std::size_t, 2> FindTwice(std::string_view text, std::string_view separator) {
  const std::size_t first = text.find(separator);
  if (first == std::string_view::npos) return {first, first};
  return {first, text.find(separator, first + separator.size())};
}

std::vector<std::string_view> Characters(std::string_view text) {
  std::vector<std::string_view> result;
  for (std::size_t i = 0; i < text.size(); i += result.back().size()) {
    result.push_back(FirstCharacter(text.substr(i)));
  }
  return result;
}

// The four digits of a year given with two; any other text as it stands.
std::string WithCentury(std::string year) {
  if (year.size() != 2 || !IsDigit(year[0]) || !IsDigit(year[1])) return year;
  return std::to_string(FullYear((year[0] - '0') * 10 + (year[1] - '0')));
}

}  // namespace

void Library::DetectLocale() {
  decimalSeparator_ = platform_.DecimalSeparator();

  const std::string date = platform_.ShortDate({1999, 12, 31});
  const std::size_t fullYear = date.find("1999");
  std::array<std::pair<std::size_t, std::string_view>, 3> parts{
      {{date.find("31"), "D"},
       {date.find("12"), "M"},
       {fullYear != std::string::npos ? fullYear : date.find("99"), "Y"}}};
  std::sort(parts.begin(), parts.end());
  const std::string_view separator = FirstNonDigit(date);
  if (parts.back().first == std::string::npos || separator.empty()) return;

  dateSeparator_ = separator;
  datePattern_.clear();
  for (const auto& [position, letter] : parts) {
    if (!datePattern_.empty()) datePattern_ += dateSeparator_;
    datePattern_ += letter;
  }
}

std::string Library::DateOrder() const {
  std::string order;
  for (const char letter : datePattern_) {
    if (letter == 'D' || letter == 'M' || letter == 'Y') order += letter;
  }
  return order;
}

double Library::ToNumber(const Value& value) const {
  if (const auto* date = std::get_if<DateValue>(&value)) {
    const auto calendar = CalendarDateOf(*date);
    return calendar ? NumberOfText(NormalizeDateText(platform_.ShortDate(*calendar))) : date->days;
  }
  if (const auto* number = std::get_if<double>(&value)) return *number;
  const std::string& text = std::get<std::string>(value);
  // The normalized text is taken as a number at once: a date with "/" in a locale with another
  // separator normalizes to itself and would otherwise be looked at for ever.
  return NumberOfText(IsDateText(value) ? NormalizeDateText(text) : text);
}

double Library::NumberOfText(std::string text) const {
  const std::size_t point = text.find('.');
  if (point != std::string::npos) text.replace(point, 1, decimalSeparator_);
  double value = 0;
  return ReadNumber(text, decimalSeparator_, value) ? value : LeadingNumber(text);
}

bool Library::IsDateText(const Value& value) const {
  if (const auto* date = std::get_if<DateValue>(&value)) return CalendarDateOf(*date).has_value();
  if (std::holds_alternative<double>(value)) return false;
  const std::string& text = std::get<std::string>(value);
  if (!IsDateOrTime(text, DateOrder(), dateSeparator_)) return false;

  std::size_t second = FindTwice(text, dateSeparator_)[1];
  if (second == std::string::npos && dateSeparator_ != "/") second = FindTwice(text, "/")[1];
  constexpr std::size_t kCharactersBefore = 3;
  return second != std::string::npos &&
         CharacterCount(std::string_view(text).substr(0, second)) >= kCharactersBefore;
}

std::string Library::NormalizeDateText(std::string_view text) const {
  const std::vector<std::string_view> pattern = Characters(datePattern_);
  std::string day;
  std::string month;
  std::string year;
  std::size_t position = 0;
  for (const std::string_view character : Characters(text)) {
    if (character == dateSeparator_) {
      ++position;
      if (position < pattern.size() && pattern[position] == dateSeparator_) ++position;
      continue;
    }
    const std::string_view letter = position < pattern.size() ? pattern[position] : "";
    if (letter == "D") day += character;
    if (letter == "M") month += character;
    if (letter == "Y") year += character;
  }
  return WithCentury(std::move(year)) + month + day;
}

void Library::ChangeToFolder(std::string_view path) const {
  const std::string_view first = FirstCharacter(path);
  if (path.substr(first.size()).starts_with(':')) {
    platform_.ChangeCurrentDrive(CharacterAt(first, 0).codePoint);
  }
  platform_.ChangeCurrentFolder(ResolveName(platform_, path));
}

void Library::Pause(double seconds, const std::function<void()>& yield) const {
  const double start = platform_.SecondsSinceMidnight();
  const double end = std::max(start, start + seconds);
  do {
    yield();
  } while (platform_.SecondsSinceMidnight() <= end);
}

}  // namespace tarvo
