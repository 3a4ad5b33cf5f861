#include "support/temporary_folder.h"

#include <stdlib.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace tarvo::test {
namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() : previous_(fs::current_path()) {
  std::string pattern = (fs::canonical(fs::temp_directory_path()) / "tarvo-test-XXXXXX").string();
  if (!::mkdtemp(pattern.data())) throw std::runtime_error("cannot make a temporary folder");
  path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::current_path(previous_, ignored);
  fs::remove_all(path_, ignored);
}

std::string TemporaryFolder::MakeFolder(std::string_view name) const {
  fs::create_directories(*this / name);
  return *this / name;
}

std::string TemporaryFolder::WriteFile(std::string_view name, std::string_view content) const {
  const fs::path path = *this / name;
  fs::create_directories(path.parent_path());
  std::ofstream file(path, std::ios::binary);
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
  if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
  return path.string();
}

std::string TemporaryFolder::WriteProgram(std::string_view name, std::string_view commands) const {
  const std::string path = WriteFile(name, "#!/bin/sh\n" + std::string(commands) + "\n");
  std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  return path;
}

std::string TemporaryFolder::ReadFile(std::string_view name) const {
  return ReadFileAt(*this / name);
}

std::string ReadFileAt(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace tarvo::test
