#include "platform/windows/windows_file.h"

#include <algorithm>
#include <string>
#include <utility>

#include "platform/windows/file_status.h"
#include "platform/windows/handle.h"
#include "platform/windows/system_path.h"
#include "platform/windows/windows_error.h"

namespace tarvo {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
// The most bytes of one call.
constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;

OVERLAPPED At(std::uint64_t offset) {
  OVERLAPPED place{};
  place.Offset = static_cast<DWORD>(offset & 0xFFFFFFFF);
  place.OffsetHigh = static_cast<DWORD>(offset >> 32);
  return place;
}

class WindowsFile final : public File {
 public:
  WindowsFile(KernelHandle handle, OpenFor use, std::string_view path)
      : handle_(std::move(handle)), use_(use), path_(path) {}

  std::uint64_t Size() override {
    LARGE_INTEGER size{};
    if (!::GetFileSizeEx(handle_.get(), &size)) throw ErrorFromCode(::GetLastError(), path_);
    return static_cast<std::uint64_t>(size.QuadPart);
  }

  std::size_t ReadInto(std::uint64_t offset, std::span<char> room) override {
    std::size_t done = 0;
    while (done < room.size()) {
      OVERLAPPED place = At(offset + done);
      const std::span<char> rest = room.subspan(done);
      const DWORD part = static_cast<DWORD>(std::min(rest.size(), kMostAtOnce));
      DWORD got = 0;
      if (!::ReadFile(handle_.get(), rest.data(), part, &got, &place)) {
        const DWORD code = ::GetLastError();
        if (code == ERROR_HANDLE_EOF) break;
        throw ErrorFromCode(code, path_);
      }
      if (got == 0) break;
      done += got;
    }
    return done;
  }

  void WriteAt(std::uint64_t offset, std::string_view bytes) override {
    if (use_ == OpenFor::kReading) throw RuntimeError::About(kBadFileMode, path_);
    std::size_t done = 0;
    while (done < bytes.size()) {
      OVERLAPPED place = At(offset + done);
      const DWORD part = static_cast<DWORD>(std::min(bytes.size() - done, kMostAtOnce));
      DWORD put = 0;
      if (!::WriteFile(handle_.get(), bytes.data() + done, part, &put, &place)) {
        throw ErrorFromCode(::GetLastError(), path_);
      }
      if (put == 0) throw ErrorFromCode(ERROR_DISK_FULL, path_);
      done += put;
    }
  }

 private:
  KernelHandle handle_;
  OpenFor use_;
  std::string path_;
};

}  // namespace

std::unique_ptr<File> OpenWindowsFile(std::string_view path, OpenFor use) {
  // The system calls a missing name a missing path.
  if (path.empty()) throw RuntimeError(kFileNotFound);
  const bool writes = use == OpenFor::kReadingAndWriting;
  const std::wstring name = SystemPath(path);
  KernelHandle handle(::CreateFileW(name.c_str(), GENERIC_READ | (writes ? GENERIC_WRITE : 0U),
                                    kShareAll, nullptr, writes ? OPEN_ALWAYS : OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!IsOpen(handle)) {
    const DWORD code = ::GetLastError();
    if (IsFolderAt(name)) throw RuntimeError::About(kPathFileAccessError, std::string(path));
    throw ErrorFromCode(code, path);
  }
  if (::GetFileType(handle.get()) != FILE_TYPE_DISK) {
    throw RuntimeError::About(kPathFileAccessError, std::string(path));
  }
  return std::make_unique<WindowsFile>(std::move(handle), use, path);
}

std::unique_ptr<File> MakeWindowsFile(std::string_view path) {
  const std::wstring name = SystemPath(path);
  // A link of the name is opened itself, and is in the way like any file.
  KernelHandle handle(::CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, kShareAll, nullptr,
                                    CREATE_NEW,
                                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
  if (!IsOpen(handle)) {
    const DWORD code = ::GetLastError();
    if (IsFolderAt(name)) throw RuntimeError::About(kPathFileAccessError, std::string(path));
    throw ErrorFromCode(code, path);
  }
  return std::make_unique<WindowsFile>(std::move(handle), OpenFor::kReadingAndWriting, path);
}

}  // namespace tarvo
