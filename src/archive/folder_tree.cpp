#include "archive/folder_tree.h"

#include <algorithm>
#include <string>

#include "archive/invalid_package.h"
#include "base/text.h"

namespace tarvo {
namespace {

// The lower case of the character at a place, a separator before all others, so that a folder's
// content follows right behind it.
char32_t OrderAt(std::string_view path, std::size_t& at) {
  const auto byte = static_cast<unsigned char>(path[at]);
  if (byte < 0x80) {
    ++at;
    return byte == '/' ? 0 : LowerCase(static_cast<char32_t>(byte));
  }
  const Character character = CharacterAt(path, at);
  at += character.size;
  return LowerCase(character.codePoint);
}

int ComparePaths(std::string_view a, std::string_view b) {
  std::size_t inA = 0;
  std::size_t inB = 0;
  while (inA < a.size() && inB < b.size()) {
    const char32_t fromA = OrderAt(a, inA);
    const char32_t fromB = OrderAt(b, inB);
    if (fromA != fromB) return fromA < fromB ? -1 : 1;
  }
  return static_cast<int>(inA < a.size()) - static_cast<int>(inB < b.size());
}

std::size_t StartOfBareName(std::string_view path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string_view::npos ? 0 : slash + 1;
}

NamePlace Part(NamePlace whole, std::size_t start, std::size_t size) {
  return {static_cast<std::uint32_t>(whole.at + start), static_cast<std::uint16_t>(size)};
}

// The members' numbers, sorted by `text` without regard to letter case; equal ones keep the order
// of the directory.
template <typename Text>
std::vector<std::uint32_t> Sorted(const Directory& directory, Text text) {
  std::vector<std::uint32_t> order(directory.members.size());
  for (std::uint32_t i = 0; i < order.size(); ++i) order[i] = i;
  std::sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
    const int result = ComparePaths(text(a), text(b));
    return result != 0 ? result < 0 : a < b;
  });
  return order;
}

// Builds the tree from members in the order of their paths.
class TreeBuilder {
 public:
  explicit TreeBuilder(const Directory& directory) : directory_(directory) {
    tree_.folders.push_back({0, {}});
  }

  void Add(std::uint32_t number) {
    const Member& member = directory_.members[number];
    const std::string_view path = directory_.PathOf(member);
    RefuseClash(member);
    const std::size_t bare = member.isFolder ? path.size() : StartOfBareName(path);
    const std::uint32_t folder = Enter(member, path.substr(0, bare));
    if (!member.isFolder) {
      tree_.files.push_back({folder, number, Part(member.path, bare, path.size() - bare)});
    }
    previous_ = &member;
  }

  FolderTree Finish() {
    std::stable_sort(tree_.files.begin(), tree_.files.end(),
                     [](const TreeFile& a, const TreeFile& b) { return a.folder < b.folder; });
    return std::move(tree_);
  }

 private:
  // Whatever clashes with a member stands right before it in this order.
  void RefuseClash(const Member& member) const {
    if (!previous_) return;
    const std::string_view path = directory_.PathOf(member);
    const std::string_view before = directory_.PathOf(*previous_);
    if (path == before) throw InvalidPackage(path, "is there more than once");
    if (ComparePaths(path, before) == 0) {
      throw InvalidPackage(
          path, "has the same name as \"" + std::string(before) + "\" except for letter case");
    }
    if (!previous_->isFolder && path.size() > before.size() && IsBelow(path, before)) {
      throw InvalidPackage(path, "lies in \"" + std::string(before) + "\", which is a file");
    }
  }

  static bool IsBelow(std::string_view path, std::string_view folder) {
    std::size_t inPath = 0;
    for (std::size_t at = 0; at < folder.size();) {
      if (inPath >= path.size() || OrderAt(path, inPath) != OrderAt(folder, at)) return false;
    }
    return inPath < path.size() && path[inPath] == '/';
  }

  std::string_view NameOf(std::uint32_t folder) const {
    return directory_.Name(tree_.folders[folder].name);
  }

  // The number of the folder with a path, made with those on its way as far as they are missing.
  // Because of the order they can only be the ones entered last.
  std::uint32_t Enter(const Member& member, std::string_view path) {
    std::size_t depth = 0;
    std::uint32_t folder = 0;
    for (std::size_t start = 0; start < path.size();) {
      const std::size_t end = std::min(path.find('/', start), path.size());
      const std::string_view name = path.substr(start, end - start);
      if (depth < chain_.size() && !EqualIgnoringCase(NameOf(chain_[depth]), name)) {
        chain_.resize(depth);
      }
      if (depth == chain_.size()) {
        if (tree_.folders.size() > kMostFolders) {
          throw InvalidPackage("The package has more than " + std::to_string(kMostFolders) +
                               " folders.");
        }
        chain_.push_back(static_cast<std::uint32_t>(tree_.folders.size()));
        tree_.folders.push_back({folder, Part(member.path, start, name.size())});
      }
      folder = chain_[depth++];
      start = end + 1;
    }
    chain_.resize(depth);
    return folder;
  }

  const Directory& directory_;
  FolderTree tree_;
  const Member* previous_ = nullptr;
  std::vector<std::uint32_t> chain_;  // the folders on the way to where the last member lies
};

}  // namespace

FolderTree BuildTree(const Directory& directory) {
  TreeBuilder builder(directory);
  const auto pathOf = [&](std::uint32_t i) { return directory.PathOf(directory.members[i]); };
  for (const std::uint32_t number : Sorted(directory, pathOf)) builder.Add(number);
  return builder.Finish();
}

FolderTree BuildFlatTree(const Directory& directory) {
  FolderTree tree;
  tree.folders.push_back({0, {}});
  const auto bareName = [&](std::uint32_t i) {
    const std::string_view path = directory.PathOf(directory.members[i]);
    return path.substr(StartOfBareName(path));
  };
  for (const std::uint32_t number : Sorted(directory, bareName)) {
    const Member& member = directory.members[number];
    if (member.isFolder) continue;
    const std::size_t start = StartOfBareName(directory.PathOf(member));
    const TreeFile file{0, number, Part(member.path, start, member.path.size - start)};
    const bool isNewer = !tree.files.empty() &&
                         EqualIgnoringCase(bareName(tree.files.back().member), bareName(number));
    if (isNewer) {
      tree.files.back() = file;
    } else {
      tree.files.push_back(file);
    }
  }
  return tree;
}

}  // namespace tarvo
