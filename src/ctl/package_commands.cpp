#include "archive/package.h"
#include "base/paths.h"
#include "base/text.h"
#include "ctl/commands.h"
#include "ctl/json.h"
#include "ctl/table.h"
#include "platform/names.h"

namespace tarvo {
namespace {

// Hand-held components need no description of a driver.
PackageKind KindOf(std::string_view path) {
  return MatchesPattern(FileNameOf(path), "*.pkg") ? PackageKind::kHandHeld : PackageKind::kDriver;
}

std::string JsonObject(const std::string& file, const std::optional<PackageFault>& fault) {
  std::string result = "{\"file\": " + JsonString(file) + ", \"valid\": ";
  if (!fault) return result + "true}";
  result += "false, \"member\": ";
  result += fault->member.empty() ? "null" : JsonString(fault->member);
  return result + ", \"reason\": " + JsonString(fault->sentence) + "}";
}

std::string VerdictLine(const std::string& file, const std::optional<PackageFault>& fault) {
  return OneLine(file) + ": " + (fault ? OneLine(fault->sentence) : "The package is valid.");
}

}  // namespace

void CheckPackages(CommandRun& run) {
  std::size_t invalid = 0;
  bool isFirst = true;
  for (const std::string& file : run.arguments) {
    const std::string path = ResolveName(run.globals.platform, file);
    const auto fault = Package(run.globals.platform, path, KindOf(path)).CheckOnly();
    if (fault) ++invalid;
    if (run.json) {
      run.out << (isFirst ? "[\n  " : ",\n  ") << JsonObject(file, fault);
    } else {
      run.out << VerdictLine(file, fault) << '\n';
    }
    isFirst = false;
  }
  if (run.json) run.out << "\n]\n";
  if (invalid > 0) {
    throw CommandFailure(std::to_string(invalid) + " of " + std::to_string(run.arguments.size()) +
                         (invalid == 1 ? " packages is" : " packages are") + " not valid.");
  }
}

void UnpackPackage(CommandRun& run) {
  Platform& platform = run.globals.platform;
  const std::string path = ResolveName(platform, run.arguments[0]);
  Package package(platform, path, KindOf(path));
  if (const auto fault = package.Check()) {
    throw CommandFailure(VerdictLine(run.arguments[0], fault));
  }
  package.Unpack(run.arguments[1]);
}

}  // namespace tarvo
