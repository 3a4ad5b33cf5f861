#include "platform/windows/registry_keys.h"

#include <windows.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "base/runtime_error.h"
#include "platform/windows/code_page.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/windows_error.h"

namespace tarvo {
namespace {

RegistryStatus StatusOf(LSTATUS code) {
  switch (code) {
    case ERROR_SUCCESS:
      return RegistryStatus::kDone;
    case ERROR_FILE_NOT_FOUND:
      return RegistryStatus::kNotFound;
    case ERROR_ACCESS_DENIED:
      return RegistryStatus::kAccessDenied;
    default:
      return RegistryStatus::kFailed;
  }
}

struct CloseKey {
  void operator()(HKEY key) const { ::RegCloseKey(key); }
};
using UniqueKey = std::unique_ptr<std::remove_pointer_t<HKEY>, CloseKey>;

HKEY HandleOf(RegistryRoot root) {
  switch (root) {
    case RegistryRoot::kClasses:
      return HKEY_CLASSES_ROOT;
  }
  return nullptr;
}

class WindowsKey final : public RegistryKey {
 public:
  explicit WindowsKey(UniqueKey key) : key_(std::move(key)) {}

  std::optional<RegistryValue> Query(std::string_view valueName, std::size_t capacity) override {
    const std::optional<std::string> name = ToAnsi(valueName);
    if (!name) return std::nullopt;
    std::string data(capacity, '\0');
    DWORD size = static_cast<DWORD>(capacity);
    DWORD type = 0;
    const LSTATUS code = ::RegQueryValueExA(key_.get(), name->c_str(), nullptr, &type,
                                            reinterpret_cast<BYTE*>(data.data()), &size);
    if (code != ERROR_SUCCESS) return std::nullopt;
    data.resize(size);
    const bool isText = type == REG_SZ;
    return RegistryValue{static_cast<RegistryType>(type), isText ? FromAnsi(data) : data};
  }

  RegistryStatus SetString(std::string_view valueName, std::string_view value) override {
    const std::optional<std::string> name = ToAnsi(valueName);
    const std::optional<std::string> data = ToAnsi(value);
    if (!name || !data) return RegistryStatus::kFailed;
    return StatusOf(::RegSetValueExA(key_.get(), name->c_str(), 0, REG_SZ,
                                     reinterpret_cast<const BYTE*>(data->data()),
                                     static_cast<DWORD>(data->size())));
  }

 private:
  UniqueKey key_;
};

OpenedKey Opened(LSTATUS code, HKEY handle) {
  if (code != ERROR_SUCCESS) return {StatusOf(code), nullptr};
  return {RegistryStatus::kDone, std::make_unique<WindowsKey>(UniqueKey(handle))};
}

}  // namespace

OpenedKey OpenWindowsKey(RegistryRoot root, std::string_view path, RegistryAccess access) {
  const std::optional<std::string> name = ToAnsi(path);
  if (!name) return {RegistryStatus::kNotFound, nullptr};
  HKEY handle = nullptr;
  const LSTATUS code =
      ::RegOpenKeyExA(HandleOf(root), name->c_str(), 0, static_cast<REGSAM>(access), &handle);
  return Opened(code, handle);
}

OpenedKey MakeWindowsKey(RegistryRoot root, std::string_view path) {
  const std::optional<std::string> name = ToAnsi(path);
  if (!name) return {RegistryStatus::kFailed, nullptr};
  HKEY handle = nullptr;
  const LSTATUS code =
      ::RegCreateKeyExA(HandleOf(root), name->c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                        KEY_ALL_ACCESS, nullptr, &handle, nullptr);
  return Opened(code, handle);
}

void DeleteWindowsProgramSettings(std::string_view application, std::string_view section) {
  // A name that is empty or has a "\" in it would reach other programs' settings.
  constexpr auto kNone = std::string_view::npos;
  const bool isNamed =
      !application.empty() && application.find('\\') == kNone && section.find('\\') == kNone;
  if (!isNamed) throw RuntimeError(kInvalidProcedureCall);
  std::wstring path = LR"(Software\VB and VBA Program Settings\)" + Wide(application);
  if (!section.empty()) path += L'\\' + Wide(section);
  const LSTATUS code = ::RegDeleteTreeW(HKEY_CURRENT_USER, path.c_str());
  if (code == ERROR_SUCCESS) return;
  if (code == ERROR_FILE_NOT_FOUND) throw RuntimeError(kInvalidProcedureCall);
  throw ErrorFromCode(static_cast<DWORD>(code), Narrow(path));
}

}  // namespace tarvo
