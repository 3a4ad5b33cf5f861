#pragma once

#include <sys/types.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

namespace tarvo::test {

// A name that is exchanged for another thing, in one step, and back again.
struct Swap {
  std::string place;   // of a folder or file; nothing happens while there is none
  std::string target;  // where the link leads to that takes the place
  bool isHardLink = false;
};

// A process of its own that swaps one of its places after the other, at random, from its making to
// the end of its life. Each stays swapped for up to a tenth of a millisecond.
class Swapper {
 public:
  // `folder` is empty, on the same drive, and the swapper's own.
  Swapper(std::vector<Swap> swaps, std::string folder, std::uint32_t seed);
  ~Swapper();
  Swapper(const Swapper&) = delete;
  Swapper& operator=(const Swapper&) = delete;

  // How often it has put something in a place.
  long long Count() const { return *count_; }

 private:
  [[noreturn]] void Run(std::uint32_t seed);
  std::string StandIn(std::size_t number) const;
  bool IsStandIn(std::size_t number) const;
  void MakeStandIn(std::size_t number);

  std::vector<Swap> swaps_;
  std::string folder_;
  int thrownAway_ = 0;
  std::atomic<long long>* count_;  // shared by both processes
  pid_t process_ = -1;
};

}  // namespace tarvo::test
