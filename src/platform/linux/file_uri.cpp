#include "platform/linux/file_uri.h"

namespace tarvo {

std::string FileUri(std::string_view absolutePath) {
  constexpr std::string_view kPlain =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string uri = "file://";
  for (const char letter : absolutePath) {
    if (kPlain.find(letter) != kPlain.npos) {
      uri += letter;
      continue;
    }
    const auto byte = static_cast<unsigned char>(letter);
    uri += '%';
    uri += kDigits[byte >> 4];
    uri += kDigits[byte & 15];
  }
  return uri;
}

}  // namespace tarvo
