#include <exception>
#include <iostream>

#include "ctl/terminal_program.h"
#include "platform/program_start.h"

int main(int count, char** values) {
  try {
    const tarvo::Utf8Output output;
    return tarvo::RunTerminalProgram(tarvo::SystemPlatform(),
                                     tarvo::ProgramArguments(count, values), std::cout, std::cerr);
  } catch (const std::exception& failure) {
    std::cerr << "tarvoctl: " << failure.what() << ".\n";
    return tarvo::kFailed;
  }
}
