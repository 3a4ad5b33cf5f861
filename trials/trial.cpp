#include "trial.h"

#include <cstdlib>
#include <iostream>

namespace tarvo::test {

bool IsFullTrial() {
  const char* const size = std::getenv("TARVO_TRIALS");
  return size && std::string_view(size) == "full";
}

int Rounds(int quick, int full) { return IsFullTrial() ? full : quick; }

void TellFigure(std::string_view name, std::string_view text) {
  std::cout << "figure " << name << ": " << text << std::endl;
}

std::string Counted(long long number) {
  std::string digits = std::to_string(number);
  const size_t first = number < 0 ? 1 : 0;
  for (size_t place = digits.size(); place > first + 3;) {
    place -= 3;
    digits.insert(place, 1, ',');
  }
  return digits;
}

}  // namespace tarvo::test
