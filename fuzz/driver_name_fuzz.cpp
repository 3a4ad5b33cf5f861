// The driver's name that a package's path gives. The input is the path.

#include <optional>
#include <string>

#include "actions/install_drivers.h"
#include "base/paths.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "input.h"
#include "require.h"

namespace tarvo::fuzz {
namespace {

// Nothing when the path has no name.
std::optional<std::string> NameOf(std::string_view path) {
  try {
    return DriverNameOfPackage(path);
  } catch (const RuntimeError& error) {
    Require(error.Number() == kInvalidProcedureCall, "a name that is too short is error 5");
    return std::nullopt;
  }
}

void CheckName(const std::string& name, std::string_view file) {
  constexpr std::size_t kExtension = 4;
  Require(file.starts_with(name), "the name is the front of the file's");
  Require(name.find('_') == name.npos, "the name ends before the version");
  const std::size_t rest = CharacterCount(file) - CharacterCount(name);
  Require(rest >= kExtension, "the extension is cut off");
  Require(rest == kExtension || file[name.size()] == '_', "nothing else is cut off");
  if (!IsDriverName(name)) {
    Require(name.empty() || name == "." || name == ".." || name.find('\\') != name.npos,
            "no other name is refused");
    return;
  }
  const std::string folder = JoinPath("/drivers", name);
  Require(FolderOf(folder) == "/drivers" && FileNameOf(folder) == name,
          "it names one folder in Drivers");
  // What was derived once does not change.
  Require(NameOf(name + ".drv") == name, "a package of that name gives the name");
  Require(NameOf("/elsewhere/" + name + "_2.1.pkg") == name, "a version changes nothing");
}

void Run(Input input) {
  const std::string_view path = input.Rest();
  const std::string_view file = FileNameOf(path);
  const std::optional<std::string> name = NameOf(path);
  Require(NameOf(file) == name, "the folder does not matter");
  Require(NameOf("/a_b/" + std::string(file)) == name, "the folder's name does not matter");
  Require(name.has_value() == (CharacterCount(file) >= 4),
          "just a name that is too short gives none");
  if (!name) return;
  CheckName(*name, file);
  if (ValidUtf8(path) == path) Require(ValidUtf8(*name) == *name, "characters stay whole");
}

}  // namespace
}  // namespace tarvo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tarvo::fuzz::Run({data, size});
  return 0;
}
