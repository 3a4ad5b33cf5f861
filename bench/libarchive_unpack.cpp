// What a program that unpacks a package with libarchive does: tests the whole archive, which checks
// the checksum of every member, then extracts it into a folder.
//
//   libarchive_unpack ARCHIVE FOLDER

#include <archive.h>
#include <archive_entry.h>
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <memory>
#include <stdexcept>

namespace {

constexpr std::size_t kBlockSize = 64 * 1024;

struct Free {
  void operator()(archive* opened) const { ::archive_read_free(opened); }
};
using Archive = std::unique_ptr<archive, Free>;

Archive Open(const char* path) {
  Archive opened(::archive_read_new());
  ::archive_read_support_format_zip(opened.get());
  if (::archive_read_open_filename(opened.get(), path, kBlockSize) != ARCHIVE_OK) {
    throw std::runtime_error(::archive_error_string(opened.get()));
  }
  return opened;
}

// Calls `take` for each member of the archive.
template <class Take>
void ForEachMember(const char* path, Take take) {
  const Archive opened = Open(path);
  archive_entry* member = nullptr;
  int result = ARCHIVE_OK;
  while ((result = ::archive_read_next_header(opened.get(), &member)) == ARCHIVE_OK) {
    if (take(opened.get(), member) != ARCHIVE_OK) {
      throw std::runtime_error(::archive_error_string(opened.get()));
    }
  }
  if (result != ARCHIVE_EOF) throw std::runtime_error(::archive_error_string(opened.get()));
}

// Reads a member to its end: libarchive compares its checksum there.
int Test(archive* opened) {
  const void* block = nullptr;
  std::size_t size = 0;
  la_int64_t offset = 0;
  int result = ARCHIVE_OK;
  while (result == ARCHIVE_OK) result = ::archive_read_data_block(opened, &block, &size, &offset);
  return result == ARCHIVE_EOF ? ARCHIVE_OK : result;
}

}  // namespace

int main(int count, char** values) {
  if (count != 3) {
    std::fputs("usage: libarchive_unpack ARCHIVE FOLDER\n", stderr);
    return 2;
  }
  try {
    ForEachMember(values[1], [](archive* opened, archive_entry*) { return Test(opened); });
    if (::chdir(values[2]) != 0) throw std::runtime_error("there is no such folder");
    ForEachMember(values[1], [](archive* opened, archive_entry* member) {
      return ::archive_read_extract(opened, member, 0);
    });
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "libarchive_unpack: %s\n", failure.what());
    return 1;
  }
}
