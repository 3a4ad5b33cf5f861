#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/forwarding_platform.h"

namespace tarvo::test {

// Where in an operation something may happen to it. Only writing has an inside: half of the bytes
// are written there.
enum class Moment { kBefore, kInside, kAfter };

// One moment of one operation that changes the disk.
struct FaultPoint {
  int number;  // counted from 1 over the platform's life
  Moment moment;
  std::string operation;  // name and path
};

// Hands every call on and tells of each moment of every operation that changes the disk. What the
// listener throws comes out of the operation.
class WatchedPlatform : public ForwardingPlatform {
 public:
  using Listener = std::function<void(const FaultPoint&)>;

  WatchedPlatform(Platform& target, Listener listener)
      : ForwardingPlatform(target), listener_(std::move(listener)) {}

  void MakeFolder(std::string_view path) override {
    Change("MakeFolder", path, [&] { ForwardingPlatform::MakeFolder(path); });
  }
  void RemoveFolder(std::string_view path) override {
    Change("RemoveFolder", path, [&] { ForwardingPlatform::RemoveFolder(path); });
  }
  void RemoveFile(std::string_view path) override {
    Change("RemoveFile", path, [&] { ForwardingPlatform::RemoveFile(path); });
  }
  void RenameFile(std::string_view path, std::string_view newPath) override {
    Change("RenameFile", newPath, [&] { ForwardingPlatform::RenameFile(path, newPath); });
  }
  std::unique_ptr<File> MakeFile(std::string_view path, FileUse use) override {
    std::unique_ptr<File> file;
    Change("MakeFile", path, [&] { file = ForwardingPlatform::MakeFile(path, use); });
    return std::make_unique<WatchedFile>(*this, std::move(file), path);
  }
  std::unique_ptr<File> OpenFile(std::string_view path, OpenFor use) override {
    if (use == OpenFor::kReading) return ForwardingPlatform::OpenFile(path, use);
    std::unique_ptr<File> file;
    Change("OpenFile", path, [&] { file = ForwardingPlatform::OpenFile(path, use); });
    return std::make_unique<WatchedFile>(*this, std::move(file), path);
  }

 private:
  class WatchedFile : public File {
   public:
    WatchedFile(WatchedPlatform& platform, std::unique_ptr<File> file, std::string_view path)
        : platform_(platform), file_(std::move(file)), path_(path) {}
    std::uint64_t Size() override { return file_->Size(); }
    std::size_t ReadInto(std::uint64_t offset, std::span<char> room) override {
      return file_->ReadInto(offset, room);
    }
    void WriteAt(std::uint64_t offset, std::string_view bytes) override {
      platform_.Change("WriteAt", path_, [&] {
        const std::size_t half = bytes.size() / 2;
        file_->WriteAt(offset, bytes.substr(0, half));
        platform_.Tell(Moment::kInside, "WriteAt", path_);
        file_->WriteAt(offset + half, bytes.substr(half));
      });
    }

   private:
    WatchedPlatform& platform_;
    std::unique_ptr<File> file_;
    std::string path_;
  };

  void Tell(Moment moment, std::string_view name, std::string_view path) {
    listener_({++points_, moment, std::string(name).append(" ").append(path)});
  }

  template <typename Operation>
  void Change(std::string_view name, std::string_view path, Operation&& operation) {
    Tell(Moment::kBefore, name, path);
    operation();
    Tell(Moment::kAfter, name, path);
  }

  Listener listener_;
  int points_ = 0;
};

}  // namespace tarvo::test
