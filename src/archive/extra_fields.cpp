#include "archive/extra_fields.h"

#include "archive/bytes.h"
#include "archive/zip_layout.h"

namespace tarvo {

namespace {

constexpr std::size_t kHead = 4;  // the identifier and the content's size

}  // namespace

bool AreExtraFieldsWhole(std::string_view extra) {
  while (extra.size() >= kHead) {
    const std::size_t size = Number16(extra, 2);
    if (size > extra.size() - kHead) return false;
    extra.remove_prefix(kHead + size);
  }
  return true;
}

std::optional<std::string_view> FindExtraField(std::string_view extra, std::uint16_t identifier) {
  while (extra.size() >= kHead) {
    const std::size_t size = Number16(extra, 2);
    if (size > extra.size() - kHead) break;
    if (Number16(extra, 0) == identifier) return extra.substr(kHead, size);
    extra.remove_prefix(kHead + size);
  }
  return std::nullopt;
}

Zip64Numbers::Zip64Numbers(std::string_view extra)
    : rest_(FindExtraField(extra, kZip64Field).value_or(std::string_view())) {}

bool Zip64Numbers::Resolve(std::uint64_t& number) {
  if (number != kIn64Bits) return true;
  if (rest_.size() < sizeof number) return false;
  number = Number64(rest_, 0);
  rest_.remove_prefix(sizeof number);
  return true;
}

}  // namespace tarvo
