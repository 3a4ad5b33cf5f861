// Prints the decimal sign and the short form of 4 March 2026 of the environment's locale, in a
// process whose own locale is another.

#include <locale.h>

#include <cstdio>

#include "platform/platform.h"

int main() {
  tarvo::Platform& platform = tarvo::SystemPlatform();
  ::setlocale(LC_ALL, "C");
  std::printf("%s %s", platform.DecimalSeparator().c_str(),
              platform.ShortDate({2026, 3, 4}).c_str());
}
