#pragma once

#include <stdlib.h>

#include <optional>
#include <string>

namespace tarvo::test {

// An environment variable with a value of the test's (nothing removes it); put back at the end.
class EnvironmentVariable {
 public:
  EnvironmentVariable(std::string name, const std::optional<std::string>& value)
      : name_(std::move(name)) {
    if (const char* previous = ::getenv(name_.c_str())) previous_ = previous;
    Set(value);
  }
  ~EnvironmentVariable() { Set(previous_); }
  EnvironmentVariable(const EnvironmentVariable&) = delete;
  EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

  void Set(const std::optional<std::string>& value) {
    if (value) {
      ::setenv(name_.c_str(), value->c_str(), 1);
    } else {
      ::unsetenv(name_.c_str());
    }
  }

 private:
  std::string name_;
  std::optional<std::string> previous_;
};

}  // namespace tarvo::test
