#include "support/temporary_folder.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

#include "base/paths.h"
#include "support/unique_folder.h"

namespace tarvo::test {
namespace fs = std::filesystem;

namespace {

// Libraries differ in what they take a narrow text for; ours are UTF-8.
fs::path PathOf(std::string_view utf8) { return fs::path(std::u8string(utf8.begin(), utf8.end())); }

}  // namespace

TemporaryFolder::TemporaryFolder() : previous_(fs::current_path()), path_(MakeUniqueFolder()) {}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::current_path(previous_, ignored);
  MakeRemovable(path_);
  fs::remove_all(path_, ignored);
}

std::string TemporaryFolder::operator/(std::string_view name) const {
  std::string path = WithSeparator(path_);
  for (const char c : name) path += c == '/' ? kSeparator : c;
  return path;
}

std::string TemporaryFolder::MakeFolder(std::string_view name) const {
  fs::create_directories(PathOf(*this / name));
  return *this / name;
}

std::string TemporaryFolder::WriteFile(std::string_view name, std::string_view content) const {
  const std::string given = *this / name;
  const fs::path path = PathOf(given);
  fs::create_directories(path.parent_path());
  std::ofstream file(path, std::ios::binary);
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
  if (!file.flush()) throw std::runtime_error("cannot write " + given);
  return given;
}

std::string TemporaryFolder::ReadFile(std::string_view name) const {
  return ReadFileAt(*this / name);
}

std::string ReadFileAt(const std::string& path) {
  std::ifstream file(PathOf(path), std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace tarvo::test
