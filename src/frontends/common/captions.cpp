#include "frontends/common/captions.h"

#include "base/text.h"

namespace tarvo {

std::string WithoutAccessKey(std::string_view caption) {
  std::string plain;
  plain.reserve(caption.size());
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == '&' && ++i == caption.size()) break;
    plain += caption[i];
  }
  return plain;
}

std::string WithLineFeeds(std::string_view text) {
  return ReplaceAll(ReplaceAll(text, "\r\n", "\n"), "\r", "\n");
}

}  // namespace tarvo
