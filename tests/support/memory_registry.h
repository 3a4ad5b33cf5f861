#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "platform/registry.h"

namespace tarvo::test {

// A system registry in memory: the values of keys by key and value name, letter case of both
// ignored. A test fills it, and can forbid to open a key for everything or to make one.
class MemoryRegistry {
 public:
  void SetString(std::string_view path, std::string_view value) {
    Set(path, {}, {RegistryType::kString, std::string(value)});
  }
  void Set(std::string_view path, std::string_view valueName, RegistryValue value) {
    keys_[LowerCase(path)][LowerCase(valueName)] = std::move(value);
  }
  void Remove(std::string_view path) { keys_.erase(LowerCase(path)); }
  bool Has(std::string_view path) const { return keys_.contains(LowerCase(path)); }
  std::string String(std::string_view path) const {
    const auto key = keys_.find(LowerCase(path));
    if (key == keys_.end() || !key->second.contains("")) return "absent";
    return key->second.at("").data;
  }

  bool isReadOnly = false;    // keys open for queries only
  bool isUnreadable = false;  // keys do not open at all
  int openKeys = 0;

  OpenedKey Open(std::string_view path, RegistryAccess access) {
    if (!Has(path)) return {RegistryStatus::kNotFound, nullptr};
    if (isUnreadable || (isReadOnly && access == RegistryAccess::kAll)) {
      return {RegistryStatus::kAccessDenied, nullptr};
    }
    return {RegistryStatus::kDone,
            std::make_unique<Key>(*this, LowerCase(path), access == RegistryAccess::kAll)};
  }
  OpenedKey Make(std::string_view path) {
    if (isReadOnly) return {RegistryStatus::kAccessDenied, nullptr};
    keys_[LowerCase(path)];
    return Open(path, RegistryAccess::kAll);
  }

 private:
  class Key : public RegistryKey {
   public:
    Key(MemoryRegistry& registry, std::string path, bool isWritable)
        : registry_(registry), path_(std::move(path)), isWritable_(isWritable) {
      ++registry_.openKeys;
    }
    ~Key() override { --registry_.openKeys; }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;

    std::optional<RegistryValue> Query(std::string_view valueName, std::size_t capacity) override {
      const auto& values = registry_.keys_[path_];
      const auto value = values.find(LowerCase(valueName));
      if (value == values.end() || value->second.data.size() > capacity) return std::nullopt;
      return value->second;
    }
    RegistryStatus SetString(std::string_view valueName, std::string_view value) override {
      if (!isWritable_) return RegistryStatus::kAccessDenied;
      registry_.Set(path_, valueName, {RegistryType::kString, std::string(value)});
      return RegistryStatus::kDone;
    }

   private:
    MemoryRegistry& registry_;
    std::string path_;
    bool isWritable_;
  };

  std::map<std::string, std::map<std::string, RegistryValue>> keys_;
};

}  // namespace tarvo::test
