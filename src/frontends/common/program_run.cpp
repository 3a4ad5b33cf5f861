#include "frontends/common/program_run.h"

#include "app/start/tarvo.h"
#include "app/start/version_report.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "forms/null_front_end.h"

namespace tarvo {

std::string JoinArguments(const std::vector<std::string>& arguments) {
  std::string joined;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (i > 0) joined += ' ';
    joined += arguments[i];
  }
  return joined;
}

std::optional<std::string> RunWithoutWindows(Platform& platform, const std::string& arguments) {
  if (LowerCase(arguments) != kVersionReport) return std::nullopt;
  NullFrontEnd frontEnd;
  try {
    Tarvo(platform, frontEnd, arguments).Start();
  } catch (const RuntimeError& error) {
    return error.StandardMessage();
  }
  return std::string();
}

}  // namespace tarvo
