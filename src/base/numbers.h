#pragma once

#include <string>
#include <string_view>

namespace tarvo {

// Numbers as the runtime's default conversions write and read them. `decimalSeparator` is the
// locale's decimal sign ("." or ",", as UTF-8 text); there are no thousands separators and no
// padding.

// The number with up to 15 significant digits; very large and very small magnitudes take an
// exponent ("1E+20").
std::string NumberText(double value, std::string_view decimalSeparator);

// The single-precision number with up to 7 significant digits.
std::string SingleText(float value, std::string_view decimalSeparator);

// The value of the longest numeric prefix, read with "." as the decimal sign whatever the locale;
// leading blanks are passed over. 0 when there is none. Never fails.
double LeadingNumber(std::string_view text);

// Reads the whole text as a number with the given decimal sign, blanks at both ends allowed; false
// when it is not one.
bool ReadNumber(std::string_view text, std::string_view decimalSeparator, double& value);

// The nearest whole number, halves to the even one.
double RoundHalfToEven(double value);

// The value in single precision; error 6 (overflow) when it is too large for that.
float ToSingle(double value);

// The value as a 16-bit whole number, halves to even; error 6 (overflow) outside -32768 to 32767.
int ToInteger(double value);

}  // namespace tarvo
