// Runs a fuzz target on every file of its corpus. Usage: NAME_replay FOLDER

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::filesystem::path> FilesIn(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  std::error_code missing;
  for (const auto& entry : std::filesystem::directory_iterator(folder, missing)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

bool Replay(const std::filesystem::path& path) {
  // Said before: when the target ends the program, the last line tells on which file.
  std::fprintf(stderr, "%s\n", path.c_str());
  std::ifstream file(path, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  if (!file) return false;
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return 2;
  }
  const std::vector<std::filesystem::path> files = FilesIn(argv[1]);
  const bool areRead = std::all_of(files.begin(), files.end(), Replay);
  if (files.empty()) std::fprintf(stderr, "There is nothing to replay in %s.\n", argv[1]);
  std::printf("%zu files replayed\n", files.size());
  return areRead && !files.empty() ? 0 : 1;
}
