#include "base/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "base/runtime_error.h"
#include "base/text.h"

namespace tarvo {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

std::string_view TrimLeft(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  return first == std::string_view::npos ? std::string_view{} : text.substr(first);
}

std::string_view Trim(std::string_view text) {
  text = TrimLeft(text);
  return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::size_t DigitsFrom(std::string_view text, std::size_t at) {
  while (at < text.size() && IsDigit(text[at])) ++at;
  return at;
}

// The length of the longest prefix of the form [sign] digits [. digits] [e [sign] digits]; 0 when
// there is none.
std::size_t NumericPrefix(std::string_view text) {
  std::size_t at = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
  const std::size_t whole = DigitsFrom(text, at);
  std::size_t digits = whole - at;
  at = whole;
  if (at < text.size() && text[at] == '.') {
    const std::size_t fraction = DigitsFrom(text, at + 1);
    digits += fraction - at - 1;
    at = fraction;
  }
  if (digits == 0) return 0;
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    std::size_t exponent = at + 1;
    if (exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-')) ++exponent;
    const std::size_t end = DigitsFrom(text, exponent);
    if (end > exponent) at = end;
  }
  return at;
}

// Whether a numeric prefix with a digit other than 0 stands for a magnitude below 1.
bool IsBelowOne(std::string_view text) {
  const std::size_t mantissaEnd = std::min(text.find_first_of("eE"), text.size());
  const std::string_view mantissa = text.substr(0, mantissaEnd);
  const auto point = static_cast<long>(std::min(mantissa.find('.'), mantissaEnd));
  const auto firstDigit = static_cast<long>(mantissa.find_first_of("123456789"));
  const long order = firstDigit < point ? point - firstDigit - 1 : point - firstDigit;
  if (mantissaEnd == text.size()) return order < 0;
  const bool negative = text[mantissaEnd + 1] == '-';
  long exponent = 0;
  for (const char c : text.substr(mantissaEnd + 1)) {
    if (IsDigit(c) && exponent < 1'000'000'000) exponent = exponent * 10 + (c - '0');
  }
  return order + (negative ? -exponent : exponent) < 0;
}

// Reads exactly a numeric prefix; too large a magnitude gives infinity, too small a one 0.
double ReadPrefix(std::string_view text) {
  if (!text.empty() && text[0] == '+') text.remove_prefix(1);
  double value = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (failure != std::errc::result_out_of_range) return value;
  const double magnitude = IsBelowOne(text) ? 0 : HUGE_VAL;
  return text[0] == '-' ? -magnitude : magnitude;
}

std::string Formatted(double value, int digits, std::string_view decimalSeparator) {
  char buffer[40];
  const auto [end, failure] =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, digits);
  std::string text(buffer, end);
  if (text == "-0") text = "0";
  for (char& c : text) {
    if (c == 'e') c = 'E';
  }
  const std::size_t point = text.find('.');
  if (point != std::string::npos) text.replace(point, 1, decimalSeparator);
  return text;
}

}  // namespace

std::string NumberText(double value, std::string_view decimalSeparator) {
  return Formatted(value, 15, decimalSeparator);
}

std::string SingleText(float value, std::string_view decimalSeparator) {
  return Formatted(value, 7, decimalSeparator);
}

double LeadingNumber(std::string_view text) {
  text = TrimLeft(text);
  const std::size_t size = NumericPrefix(text);
  return size == 0 ? 0 : ReadPrefix(text.substr(0, size));
}

bool ReadNumber(std::string_view text, std::string_view decimalSeparator, double& value) {
  std::string plain(Trim(text));
  if (decimalSeparator != ".") {
    if (plain.find('.') != std::string::npos) return false;
    const std::size_t sign = plain.find(decimalSeparator);
    if (sign != std::string::npos) plain.replace(sign, decimalSeparator.size(), ".");
  }
  const std::size_t size = NumericPrefix(plain);
  if (size == 0 || size != plain.size()) return false;
  value = ReadPrefix(plain);
  return true;
}

double RoundHalfToEven(double value) { return std::nearbyint(value); }

float ToSingle(double value) {
  if (!(std::abs(value) <= std::numeric_limits<float>::max())) throw RuntimeError(kOverflow);
  return static_cast<float>(value);
}

int ToInteger(double value) {
  const double whole = RoundHalfToEven(value);
  if (!(whole >= -32768 && whole <= 32767)) throw RuntimeError(kOverflow);
  return static_cast<int>(whole);
}

}  // namespace tarvo
