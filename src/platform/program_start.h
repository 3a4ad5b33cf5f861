#pragma once

#include <string>
#include <vector>

namespace tarvo {

// The words of the command line behind the program's own name, in UTF-8. `count` and `values` are
// what `main` is given; systems that keep the words in another form take them from there.
std::vector<std::string> ProgramArguments(int count, const char* const* values);

// While it lives, what is written to the standard output and error is taken for UTF-8 by a terminal
// and reaches a file as it stands, without a change at line ends.
class Utf8Output {
 public:
  Utf8Output();
  ~Utf8Output();
  Utf8Output(const Utf8Output&) = delete;
  Utf8Output& operator=(const Utf8Output&) = delete;

 private:
  // The terminal's code page, on systems whose terminals have one.
  [[maybe_unused]] unsigned before_ = 0;
};

}  // namespace tarvo
