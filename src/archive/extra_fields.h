#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tarvo {

// Whether every extra field ends where they all end. Up to three bytes behind the last one are
// padding.
bool AreExtraFieldsWhole(std::string_view extra);

// The content of the first extra field with an identifier; nothing when there is none.
std::optional<std::string_view> FindExtraField(std::string_view extra, std::uint16_t identifier);

// Reads the 64-bit numbers of an entry or header one by one, in their fixed order: each stands
// there only when its 32-bit field says so.
class Zip64Numbers {
 public:
  explicit Zip64Numbers(std::string_view extra);

  // The number of a 32-bit field. False when it should stand here and does not.
  bool Resolve(std::uint64_t& number);

 private:
  std::string_view rest_;
};

}  // namespace tarvo
