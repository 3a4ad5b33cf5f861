#pragma once

#include <atomic>
#include <functional>

namespace tarvo::test {

// A number that all processes forked after its making share.
class SharedCount {
 public:
  SharedCount();
  ~SharedCount();
  SharedCount(const SharedCount&) = delete;
  SharedCount& operator=(const SharedCount&) = delete;

  void Add(long long number) { *count_ += number; }
  long long Get() const { return *count_; }

 private:
  std::atomic<long long>* count_;
};

// Does the work in `count` processes, numbered from 0, that begin it at the same moment, and waits
// for all. A process that throws or dies fails the running test.
void DoAtOnce(int count, const std::function<void(int process)>& work);

}  // namespace tarvo::test
