#include "archive/member_name.h"

#include <algorithm>

#include "archive/invalid_package.h"
#include "archive/unpacking.h"
#include "base/text.h"

namespace tarvo {
namespace {

// The characters of the bytes from 0x80 on.
constexpr char32_t kUpperHalf[128] = {
    0x00C7, 0x00FC, 0x00E9, 0x00E2, 0x00E4, 0x00E0, 0x00E5, 0x00E7, 0x00EA, 0x00EB, 0x00E8, 0x00EF,
    0x00EE, 0x00EC, 0x00C4, 0x00C5, 0x00C9, 0x00E6, 0x00C6, 0x00F4, 0x00F6, 0x00F2, 0x00FB, 0x00F9,
    0x00FF, 0x00D6, 0x00DC, 0x00A2, 0x00A3, 0x00A5, 0x20A7, 0x0192, 0x00E1, 0x00ED, 0x00F3, 0x00FA,
    0x00F1, 0x00D1, 0x00AA, 0x00BA, 0x00BF, 0x2310, 0x00AC, 0x00BD, 0x00BC, 0x00A1, 0x00AB, 0x00BB,
    0x2591, 0x2592, 0x2593, 0x2502, 0x2524, 0x2561, 0x2562, 0x2556, 0x2555, 0x2563, 0x2551, 0x2557,
    0x255D, 0x255C, 0x255B, 0x2510, 0x2514, 0x2534, 0x252C, 0x251C, 0x2500, 0x253C, 0x255E, 0x255F,
    0x255A, 0x2554, 0x2569, 0x2566, 0x2560, 0x2550, 0x256C, 0x2567, 0x2568, 0x2564, 0x2565, 0x2559,
    0x2558, 0x2552, 0x2553, 0x256B, 0x256A, 0x2518, 0x250C, 0x2588, 0x2584, 0x258C, 0x2590, 0x2580,
    0x03B1, 0x00DF, 0x0393, 0x03C0, 0x03A3, 0x03C3, 0x00B5, 0x03C4, 0x03A6, 0x0398, 0x03A9, 0x03B4,
    0x221E, 0x03C6, 0x03B5, 0x2229, 0x2261, 0x00B1, 0x2265, 0x2264, 0x2320, 0x2321, 0x00F7, 0x2248,
    0x00B0, 0x2219, 0x00B7, 0x221A, 0x207F, 0x00B2, 0x25A0, 0x00A0,
};

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

bool IsControl(char32_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); }

void RefuseControls(std::string_view name) {
  for (std::size_t at = 0; at < name.size();) {
    const Character character = CharacterAt(name, at);
    if (character.codePoint == 0) throw InvalidPackage(name, "has a NUL in its name");
    if (IsControl(character.codePoint)) {
      throw InvalidPackage(name, "has a control character in its name");
    }
    at += character.size;
  }
}

// Adds one name of the path; `member` is the whole.
void AddName(std::string& path, std::string_view name, std::string_view member) {
  if (name == ".") return;
  if (name.empty()) throw InvalidPackage(member, "has an empty folder name in its path");
  if (name == "..") throw InvalidPackage(member, "has \"..\" in its path");
  if (name.size() > 1 && IsLetter(name[0]) && name[1] == ':') {
    throw InvalidPackage(member, "has a drive letter in its path");
  }
  if (name.size() > kLongestName) throw InvalidPackage(member, "has a name that is too long");
  if (IsUnfinishedName(name)) {
    throw InvalidPackage(member, "has a name that is kept for files that are not complete");
  }
  if (!path.empty()) path += '/';
  path += name;
}

}  // namespace

std::string DecodeCodePage437(std::string_view bytes) {
  std::string text;
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    AppendCharacter(text, value < 0x80 ? value : kUpperHalf[value - 0x80]);
  }
  return text;
}

bool IsUtf8(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const Character character = CharacterAt(text, at);
    if (character.codePoint >= kBadByte) return false;
    at += character.size;
  }
  return true;
}

MemberPath PathOfMember(std::string_view name) {
  if (name.empty()) throw InvalidPackage(name, "has an empty name");
  if (name.size() > kLongestPath) {
    throw InvalidPackage(ValidUtf8(name.substr(0, 40)) + "...", "has a name that is too long");
  }
  RefuseControls(name);
  std::string rest(name);
  std::replace(rest.begin(), rest.end(), '\\', '/');
  if (rest[0] == '/') throw InvalidPackage(name, "has an absolute path");
  MemberPath result{"", rest.back() == '/'};
  if (result.isFolder) rest.pop_back();
  for (std::size_t start = 0; start <= rest.size();) {
    const std::size_t end = std::min(rest.find('/', start), rest.size());
    AddName(result.path, std::string_view(rest).substr(start, end - start), name);
    start = end + 1;
  }
  const bool endsInDot = rest == "." || rest.ends_with("/.");
  if (!result.isFolder && endsInDot) throw InvalidPackage(name, "has an empty name");
  return result;
}

}  // namespace tarvo
