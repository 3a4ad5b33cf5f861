#include "store_fixture.h"

#include <filesystem>
#include <fstream>

namespace tarvo::test {
namespace {

class WatchedFile final : public File {
 public:
  WatchedFile(WatchedPlatform& platform, std::unique_ptr<File> file)
      : platform_(platform), file_(std::move(file)) {
    ++platform_.openFiles;
  }
  ~WatchedFile() override { --platform_.openFiles; }

  std::uint64_t Size() override { return file_->Size(); }
  std::size_t ReadInto(std::uint64_t offset, std::span<char> room) override {
    platform_.beforeReading(offset, room.size());
    return file_->ReadInto(offset, room);
  }
  void WriteAt(std::uint64_t offset, std::string_view bytes) override {
    platform_.beforeWriting(offset, bytes);
    file_->WriteAt(offset, bytes);
  }

 private:
  WatchedPlatform& platform_;
  std::unique_ptr<File> file_;
};

std::string CutField(std::string_view file, std::size_t start) {
  const std::string field(file.substr(start, 1024));
  return field.substr(0, field.find('\0'));
}

}  // namespace

std::unique_ptr<File> WatchedPlatform::OpenFile(std::string_view path, OpenFor use) {
  beforeOpening(path);
  return std::make_unique<WatchedFile>(*this, HandMovedPlatform::OpenFile(path, use));
}

void WatchedPlatform::MakeFolder(std::string_view path) {
  beforeMakingFolder(path);
  HandMovedPlatform::MakeFolder(path);
}

double WatchedPlatform::Now() {
  atReadingNow();
  return HandMovedPlatform::Now();
}

double WatchedPlatform::SecondsSinceMidnight() {
  constexpr int kMostReadings = 100'000;
  if (++readingsOfClock > kMostReadings) throw std::logic_error("waits without end");
  return HandMovedPlatform::SecondsSinceMidnight();
}

std::string RecordBytes(std::string_view firstField, std::string_view secondField) {
  std::string record(kRecord, '\0');
  record[1] = 8;
  record.replace(2, firstField.size(), firstField);
  record.replace(1026, secondField.size(), secondField);
  return record;
}

std::string FirstFieldOf(std::string_view file, std::size_t number) {
  return CutField(file, (number - 1) * kRecord + 2);
}

std::string SecondFieldOf(std::string_view file, std::size_t number) {
  return CutField(file, (number - 1) * kRecord + 1026);
}

void StoreTest::WriteBytes(std::string_view bytes) const {
  // File systems flush a file that is cut to nothing and written again; a new one they do not.
  std::filesystem::remove(Path());
  folder.WriteFile("localregistry.dat", bytes);
}

void StoreTest::WriteInPlace(std::string_view bytes) const {
  std::fstream file(Path(), std::ios::in | std::ios::out | std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!file.flush()) throw std::runtime_error("cannot write over the file");
}

}  // namespace tarvo::test
