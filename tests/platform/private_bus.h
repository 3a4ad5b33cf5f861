#pragma once

#include <string>

#include "support/temporary_folder.h"
#include "test_process.h"

namespace tarvo::test {

// A session bus of the test's own, at an address that only who is told knows. Its daemon ends with
// the test.
class PrivateBus {
 public:
  PrivateBus();

  const std::string& Address() const { return address_; }

  // Ends the daemon, as at the end of a session.
  void End() { daemon_.End(); }

  // Has the daemon start a command for a name that nobody owns.
  void MakeStartable(const std::string& name, const std::string& command) const;

  // Whether somebody owns a name.
  bool HasOwner(const std::string& name) const;

 private:
  TemporaryFolder folder_;
  std::string address_;
  TestProcess daemon_;
};

}  // namespace tarvo::test
