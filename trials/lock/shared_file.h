#pragma once

#include <string>

namespace tarvo::test {

// What the processes of a trial write into one settings file: each has keys of its own, and a value
// fills its field, so that one that is put together from two writes shows it.
std::string KeyOf(int process, int key);
std::string ValueOf(int process, int key, int round);

// Whether a value is one that was written under the key, whatever the round.
bool IsValueOf(int process, int key, const std::string& value);

// What has become of the keys in the end.
struct Findings {
  long long lost = 0;   // keys that are not there
  long long old = 0;    // keys whose value is of an earlier round: the write was lost
  long long twice = 0;  // records of a key that has another one
  long long torn = 0;   // records that are neither free nor a key with a value of its own
  long long locks = 0;  // locks that nobody has released

  Findings& operator+=(const Findings& other);
  bool operator==(const Findings&) const = default;
};

// Looks at the bytes of a settings file in which each process has written each key in `round`; the
// records of other keys than these may be anything.
Findings Examine(const std::string& bytes, int processes, int keys, int round);

// The bytes of a settings file that has these keys with their values of round 0.
std::string FileWithKeys(int processes, int keys);

// "0 lost", or the counts that are not 0: "3 lost, 1 twice".
std::string TextOf(const Findings& findings);

}  // namespace tarvo::test
