#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tarvo {

// The roots of the system registry that the program uses.
enum class RegistryRoot : unsigned { kClasses = 0x80000000 };

// What a key is opened for, with the classic access masks.
enum class RegistryAccess : unsigned { kQuery = 1, kAll = 0x2003F };

// Types of values.
enum class RegistryType : int { kString = 1, kBinary = 3, kNumber = 4 };

// The classic codes of the registry's calls.
enum class RegistryStatus : int { kDone = 0, kNotFound = 2, kAccessDenied = 5, kFailed = 1010 };

struct RegistryValue {
  RegistryType type = RegistryType::kString;
  std::string data;  // the bytes; a string's may end in one NUL, a number's stand low byte first
};

// An open key; its end closes it. The value name "" is the key's default value. Nothing throws.
class RegistryKey {
 public:
  virtual ~RegistryKey() = default;

  // Nothing when there is no such value or it is larger than `capacity` bytes.
  virtual std::optional<RegistryValue> Query(std::string_view valueName, std::size_t capacity) = 0;

  // Writes a string, whose data may end in one NUL. A crash leaves the old value or the new one.
  virtual RegistryStatus SetString(std::string_view valueName, std::string_view value) = 0;
};

// What opening or making a key gave: the key exactly when the status is kDone.
struct OpenedKey {
  RegistryStatus status = RegistryStatus::kFailed;
  std::unique_ptr<RegistryKey> key;
};

}  // namespace tarvo
