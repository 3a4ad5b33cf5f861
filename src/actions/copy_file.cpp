#include "actions/copy_file.h"

#include "actions/replace_file.h"
#include "base/paths.h"
#include "platform/names.h"

namespace tarvo {

void CopyIntoFolder(Platform& platform, std::string_view file, std::string_view folder) {
  const auto source = platform.OpenFile(ResolveName(platform, file), OpenFor::kReading);
  const std::string target = ResolveName(platform, JoinPath(folder, FileNameOf(file)));
  ReplaceFile(platform, target, [&](File& copy) { CopyBytes(*source, copy); });
}

}  // namespace tarvo
