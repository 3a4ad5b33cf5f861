#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

namespace tarvo {

// Inflates deflated bytes, piece by piece: the one place that knows the library that does it, which
// is ISA-L where it was found when this was built, else zlib. ISA-L takes codes that are incomplete
// where none of what they lack is used, and zlib does not: the checksum tells whether a content is
// right.
class Inflater {
 public:
  Inflater();
  ~Inflater();
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;

  struct Step {
    std::uint64_t taken;  // bytes of all input since the beginning that are used up
    std::size_t made;     // bytes of the output that are filled
    bool hasEnded;        // the deflated bytes end here
    bool isDamaged;       // these are no deflated bytes
  };

  // Begins with new deflated bytes.
  void Restart();

  // Goes on with the next bytes, those behind what is used up. Takes and makes as much as it can.
  Step Run(std::string_view input, std::span<char> output);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

// The CRC of bytes that continue those with the CRC `before`; 0 at the beginning.
std::uint32_t Crc32(std::uint32_t before, std::string_view bytes);

}  // namespace tarvo
