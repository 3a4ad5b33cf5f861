#include "settings_records.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace tarvo::test {
namespace {

constexpr std::size_t kRecord = 2050;
constexpr std::size_t kKeyStart = 2;
constexpr std::size_t kKeySize = 1024;

std::string_view RecordAt(std::string_view file, std::size_t number) {
  const std::size_t start = std::min(file.size(), (number - 1) * kRecord);
  return file.substr(start, kRecord);
}

std::string_view KeyOf(std::string_view record) {
  const std::string_view field = record.substr(std::min(kKeyStart, record.size()), kKeySize);
  return field.substr(0, field.find('\0'));
}

// Whether a key field is a key, one of its continuations or the beginning of one.
bool BelongsTo(std::string_view stored, const std::vector<std::string>& keys) {
  return std::any_of(keys.begin(), keys.end(), [&](const std::string& key) {
    return key.starts_with(stored) || stored.starts_with(key + "~");
  });
}

}  // namespace

void ExpectOtherRecordsSame(std::string_view now, std::string_view before,
                            const std::vector<std::string>& keys) {
  EXPECT_GE(now.size(), before.size()) << "the file has become shorter";
  for (std::size_t number = 2; (number - 1) * kRecord < now.size(); ++number) {
    const std::string_view record = RecordAt(now, number);
    const std::string_view old = RecordAt(before, number);
    if (record == old) continue;
    EXPECT_TRUE(BelongsTo(KeyOf(old), keys)) << "record " << number << " was of " << KeyOf(old);
    EXPECT_TRUE(BelongsTo(KeyOf(record), keys))
        << "record " << number << " is of " << KeyOf(record);
  }
}

void ExpectNoKeyTwice(std::string_view file) {
  std::set<std::string_view> keys;
  for (std::size_t number = 2; (number - 1) * kRecord < file.size(); ++number) {
    const std::string_view key = KeyOf(RecordAt(file, number));
    EXPECT_TRUE(key.empty() || keys.insert(key).second) << key << " is there twice";
  }
}

}  // namespace tarvo::test
