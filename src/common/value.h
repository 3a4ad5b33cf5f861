#pragma once

#include <string>
#include <variant>

namespace tarvo {

// A date and time as days since 30 December 1899, the time of day as the fraction.
struct DateValue {
  double days = 0;
};

// What the number and date helpers take: a text, a number or a date.
using Value = std::variant<std::string, double, DateValue>;

}  // namespace tarvo
