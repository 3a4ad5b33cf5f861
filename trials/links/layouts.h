#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tarvo::test {

// Where a layout of links is made: a data folder with the driver "Meter", and a tree outside of it
// that nothing may change. Paths are absolute.
struct Ground {
  std::string root;     // holds everything else
  std::string data;     // the data folder
  std::string drivers;  // its folder "Drivers"
  std::string meter;    // the driver's folder
  std::string outside;
};

// Links in a certain order: how they are made, and under what name a failure tells of them.
struct Layout {
  const char* name;
  std::function<void(const Ground& ground)> make;
};

// Every layout that removing and installing are tried in.
const std::vector<Layout>& Layouts();

}  // namespace tarvo::test
