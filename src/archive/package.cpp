#include "archive/package.h"

#include <algorithm>
#include <array>

#include "archive/content_store.h"
#include "archive/directory.h"
#include "archive/folder_tree.h"
#include "archive/invalid_package.h"
#include "archive/member_reader.h"
#include "archive/unpacking.h"
#include "base/paths.h"
#include "base/runtime_error.h"
#include "base/text.h"

namespace tarvo {
namespace {

constexpr std::string_view kDescription = "driver.inf";

// What is kept in memory altogether, and what of it each member's table rows may take.
constexpr std::uint64_t kMostKept = std::uint64_t{40} * 1024 * 1024;
constexpr std::uint64_t kMemberRows = 160;

std::uint64_t RoomForContents(const Directory& directory, std::uint64_t mostKept) {
  const std::uint64_t tables = directory.members.size() * kMemberRows + directory.names.size();
  std::uint64_t contents = 0;
  for (const Member& member : directory.members) contents += member.size;
  return std::min(mostKept - std::min(mostKept, tables), contents);
}

// Takes contents and lets them go.
class NoSink final : public ByteSink {
 public:
  std::span<char> Room() override { return buffer_; }
  void Take(std::size_t) override {}

 private:
  std::array<char, std::size_t{64} * 1024> buffer_;
};

// Takes a content piece by piece.
using TakePiece = std::function<void(std::string_view)>;

// Hands contents on.
class HandingSink final : public ByteSink {
 public:
  explicit HandingSink(const TakePiece& take) : take_(take) {}
  std::span<char> Room() override { return buffer_; }
  void Take(std::size_t count) override { take_({buffer_.data(), count}); }

 private:
  const TakePiece& take_;
  std::array<char, std::size_t{64} * 1024> buffer_;
};

// A package that was found valid is not any more.
[[noreturn]] void FailAsChanged(const InvalidPackage& invalid) {
  throw RuntimeError(kInvalidFileFormat,
                     "The package has changed since it was checked: " + invalid.Fault().sentence);
}

}  // namespace

// An open package: what its directory says, and what has been verified.
class Package::Contents {
 public:
  Contents(std::unique_ptr<File> file, std::uint64_t mostKept)
      : window_(std::move(file)),
        directory_(ReadDirectory(window_)),
        store_(RoomForContents(directory_, mostKept)),
        reader_(window_) {}

  void CheckDescription() {
    for (Member& member : directory_.members) {
      if (IsDescription(member)) {
        Verify(member);
        return;
      }
    }
    throw InvalidPackage("The package has no \"driver.inf\" in its root.");
  }

  void CheckAll() {
    tree_ = BuildTree(directory_);
    std::vector<std::uint32_t> order(directory_.members.size());
    for (std::uint32_t i = 0; i < order.size(); ++i) order[i] = i;
    std::sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
      return directory_.members[a].header < directory_.members[b].header;
    });
    std::uint64_t end = 0;
    for (const std::uint32_t number : order) {
      Member& member = directory_.members[number];
      if (member.header < end) {
        throw InvalidPackage(directory_.PathOf(member), "overlaps another member");
      }
      Verify(member);
      end = member.end;
    }
  }

  void Unpack(Platform& platform, std::string_view folder, bool isFlat,
              const FinishDescription& finishDescription) {
    if (isFlat) {
      const FolderTree flat = BuildFlatTree(directory_);
      Unpack(platform, folder, flat, finishDescription);
    } else {
      Unpack(platform, folder, tree_, finishDescription);
    }
  }

  std::string FirstRootFile(std::string_view pattern) const {
    std::string_view first;
    for (const TreeFile& file : tree_.files) {
      const std::string_view name = directory_.Name(file.name);
      if (file.folder != 0 || name.starts_with('.') || !MatchesPattern(name, pattern)) continue;
      if (first.empty() || CompareIgnoringCase(name, first) < 0) first = name;
    }
    return std::string(first);
  }

  std::string ReadRootFile(std::string_view name, std::uint64_t most) {
    for (const TreeFile& file : tree_.files) {
      if (file.folder != 0 || directory_.Name(file.name) != name) continue;
      const Member& member = directory_.members[file.member];
      if (member.size > most) throw RuntimeError(kPathFileAccessError);
      std::string content;
      content.reserve(static_cast<std::size_t>(member.size));
      Give(member, [&](std::string_view piece) { content += piece; });
      return content;
    }
    throw RuntimeError(kFileNotFound);
  }

 private:
  bool IsDescription(const Member& member) const {
    return !member.isFolder && EqualIgnoringCase(directory_.PathOf(member), kDescription);
  }

  void Verify(Member& member) {
    if (member.isVerified) return;
    if (store_.HasRoomFor(member.size)) {
      const std::uint64_t start = store_.End();
      member.end = reader_.Read(directory_, member, store_);
      member.content = start;
    } else {
      NoSink sink;
      member.end = reader_.Read(directory_, member, sink);
    }
    member.isVerified = true;
  }

  void Unpack(Platform& platform, std::string_view folder, const FolderTree& tree,
              const FinishDescription& finishDescription) {
    Unpacking unpacking(platform, directory_, tree);
    unpacking.Run(folder, [&](std::uint32_t number, File& file) {
      const Member& member = directory_.members[number];
      std::uint64_t written = 0;
      Give(member, [&](std::string_view piece) {
        file.WriteAt(written, piece);
        written += piece.size();
      });
      if (finishDescription && IsDescription(member)) finishDescription(file);
    });
  }

  void Give(const Member& member, const TakePiece& take) {
    if (member.content == Member::kNotKept) {
      HandingSink sink(take);
      reader_.Read(directory_, member, sink);
    } else {
      take(store_.Read(member.content, member.size));
    }
  }

  FileWindow window_;
  Directory directory_;
  FolderTree tree_;
  ContentStore store_;
  MemberReader reader_;
};

Package::Package(Platform& platform, std::string_view path, PackageKind kind)
    : platform_(platform), path_(path), kind_(kind) {}

Package::~Package() = default;

std::optional<PackageFault> Package::Check() { return Check(kMostKept); }

std::optional<PackageFault> Package::CheckOnly() {
  const auto fault = Check(0);
  contents_.reset();
  return fault;
}

std::optional<PackageFault> Package::Check(std::uint64_t mostKept) {
  contents_.reset();
  try {
    auto contents =
        std::make_unique<Contents>(platform_.OpenFile(path_, OpenFor::kReading), mostKept);
    if (kind_ == PackageKind::kDriver) contents->CheckDescription();
    contents->CheckAll();
    contents_ = std::move(contents);
    return std::nullopt;
  } catch (const InvalidPackage& invalid) {
    return invalid.Fault();
  } catch (const RuntimeError& error) {
    return PackageFault{"", "The package cannot be read: " + error.Description() + "."};
  }
}

void Package::Unpack(std::string_view folder, const FinishDescription& finishDescription) {
  Unpack(folder, false, finishDescription);
}

void Package::UnpackFlat(std::string_view folder) { Unpack(folder, true, {}); }

void Package::Unpack(std::string_view folder, bool isFlat,
                     const FinishDescription& finishDescription) {
  if (!contents_) throw RuntimeError(kInvalidProcedureCall);
  try {
    contents_->Unpack(platform_, folder, isFlat, finishDescription);
  } catch (const InvalidPackage& invalid) {
    FailAsChanged(invalid);
  }
}

std::string Package::FirstRootFile(std::string_view pattern) const {
  return contents_ ? contents_->FirstRootFile(pattern) : std::string();
}

std::string Package::ReadRootFile(std::string_view name, std::uint64_t most) {
  if (!contents_) throw RuntimeError(kFileNotFound);
  try {
    return contents_->ReadRootFile(name, most);
  } catch (const InvalidPackage& invalid) {
    FailAsChanged(invalid);
  }
}

}  // namespace tarvo
