#include <fstream>
#include <iostream>
#include <string>

#include "archive/package.h"

// Checks a package and unpacks it when it is valid, in a process of its own, and tells how much
// memory that took at most: "valid" or the fault, then the memory in KiB.
int main(int count, char** values) {
  if (count != 3) return 2;
  tarvo::Package package(tarvo::SystemPlatform(), values[1]);
  const auto fault = package.Check();
  if (!fault) package.Unpack(values[2]);
  std::ifstream status("/proc/self/status");
  long memory = -1;
  for (std::string word; status >> word;) {
    if (word == "VmHWM:") status >> memory;
  }
  std::cout << (fault ? fault->sentence : "valid") << '\n' << memory << '\n';
  return 0;
}
