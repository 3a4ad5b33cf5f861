#include <clocale>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "ctl/terminal_program.h"

int main(int count, char** values) {
  std::setlocale(LC_ALL, "");
  try {
    return tarvo::RunTerminalProgram(tarvo::SystemPlatform(), {values + 1, values + count},
                                     std::cout, std::cerr);
  } catch (const std::exception& failure) {
    std::cerr << "tarvoctl: " << failure.what() << ".\n";
    return tarvo::kFailed;
  }
}
