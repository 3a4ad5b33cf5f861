#include "support/made_package.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace tarvo::test {
namespace fs = std::filesystem;

std::string MakePackage(const TemporaryFolder& folder, const std::string& package,
                        const PackageFiles& files) {
  const TemporaryFolder packed;
  for (const auto& [name, content] : files) {
    const std::string path = packed.WriteFile(name, content);
    const bool isProgram = name.ends_with(".exe") || name.ends_with(".EXE");
    if (isProgram) fs::permissions(path, fs::perms(0755));
  }
  const fs::path target = folder / package;
  fs::create_directories(target.parent_path());
  const std::string made = packed.Path() + ".zip";
  const std::string call = "cd '" + packed.Path() + "' && zip -q -r '" + made + "' .";
  EXPECT_EQ(std::system(call.c_str()), 0);
  fs::copy_file(made, target, fs::copy_options::overwrite_existing);
  fs::remove(made);
  return target.string();
}

}  // namespace tarvo::test
