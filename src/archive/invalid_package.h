#pragma once

#include <exception>
#include <string>
#include <string_view>

#include "archive/package.h"

namespace tarvo {

// Thrown where a package turns out not to be valid; Package hands the fault to its caller.
class InvalidPackage : public std::exception {
 public:
  // A fault of the whole: a sentence.
  explicit InvalidPackage(std::string sentence) : fault_{"", std::move(sentence)} {}

  // A fault of a member: what is said of it, as "is encrypted".
  InvalidPackage(std::string_view member, std::string_view predicate);

  const PackageFault& Fault() const { return fault_; }
  const char* what() const noexcept override { return fault_.sentence.c_str(); }

 private:
  PackageFault fault_;
};

}  // namespace tarvo
