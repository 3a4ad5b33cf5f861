#include "platform/linux/process_table.h"

#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <string>

namespace tarvo {
namespace {

struct Kinship {
  int parent = 0;
  int session = 0;
};

// From "/proc/N/stat": identifier, name in brackets, state, parent, process group, session. The
// name may hold anything, brackets and blanks included.
std::optional<Kinship> KinshipOf(int process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/stat");
  const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  const std::size_t nameEnd = text.rfind(')');
  if (nameEnd == std::string::npos) return std::nullopt;
  std::istringstream rest(text.substr(nameEnd + 1));
  std::string state;
  Kinship kinship;
  int group = 0;
  rest >> state >> kinship.parent >> group >> kinship.session;
  if (!rest) return std::nullopt;
  return kinship;
}

}  // namespace

bool BelongsToTool(int process, int tool) {
  if (tool <= 0) return false;
  // The table changes while it is read; a chain of parents longer than this is none.
  constexpr int kMostGenerations = 1000;
  int ancestor = process;
  for (int i = 0; i < kMostGenerations && ancestor > 0; ++i) {
    const std::optional<Kinship> kinship = KinshipOf(ancestor);
    if (!kinship) return false;
    if (ancestor == tool || kinship->session == tool) return true;
    ancestor = kinship->parent;
  }
  return false;
}

}  // namespace tarvo
