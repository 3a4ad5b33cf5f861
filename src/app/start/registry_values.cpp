#include "app/start/registry_values.h"

#include <charconv>
#include <cstdint>

namespace tarvo {
namespace {

constexpr std::size_t kCapacity = 1024;

OpenedKey OpenForReading(Platform& platform, RegistryRoot root, std::string_view path) {
  OpenedKey opened = platform.OpenRegistryKey(root, path, RegistryAccess::kAll);
  if (opened.key) return opened;
  return platform.OpenRegistryKey(root, path, RegistryAccess::kQuery);
}

// The digits of each byte without a leading zero, highest byte first, read as one number.
std::string NumberText(std::string_view bytes) {
  std::string digits;
  for (std::size_t i = bytes.size(); i-- > 0;) {
    char text[2];
    const auto end =
        std::to_chars(text, text + sizeof text, static_cast<unsigned char>(bytes[i]), 16);
    digits.append(text, end.ptr);
  }
  std::uint32_t number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
  return std::to_string(number);
}

}  // namespace

bool ReadRegistryValue(Platform& platform, RegistryRoot root, std::string_view path,
                       std::string_view valueName, std::string& result) {
  const OpenedKey opened = OpenForReading(platform, root, path);
  const auto value = opened.key ? opened.key->Query(valueName, kCapacity) : std::nullopt;
  if (!value) {
    result.clear();
    return false;
  }
  std::string_view data = value->data;
  if (data.ends_with('\0')) data.remove_suffix(1);
  if (value->type == RegistryType::kString) result = data;
  if (value->type == RegistryType::kNumber) result = NumberText(data);
  return true;
}

bool WriteRegistryString(Platform& platform, RegistryRoot root, std::string_view path,
                         std::string_view valueName, std::string& value) {
  OpenedKey opened = platform.OpenRegistryKey(root, path, RegistryAccess::kAll);
  if (opened.status == RegistryStatus::kNotFound) opened = platform.MakeRegistryKey(root, path);
  const bool isWritten =
      opened.key &&
      opened.key->SetString(valueName, value + std::string(1, '\0')) == RegistryStatus::kDone;
  if (!isWritten) value.clear();
  return isWritten;
}

}  // namespace tarvo
