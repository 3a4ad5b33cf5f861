#include "crowd.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>
#include <stdexcept>
#include <vector>

namespace tarvo::test {
namespace {

// Forks a process that begins when the writing end of `start` is closed everywhere.
pid_t Fork(const int (&start)[2], int process, const std::function<void(int)>& work) {
  const pid_t child = ::fork();
  if (child != 0) return child;
  try {
    char nothing;
    ::close(start[1]);
    if (::read(start[0], &nothing, 1) != 0) throw std::runtime_error("has not been told to begin");
    work(process);
  } catch (const std::exception& error) {
    std::cerr << error.what() << std::endl;
    ::_exit(EXIT_FAILURE);
  }
  ::_exit(EXIT_SUCCESS);
}

}  // namespace

SharedCount::SharedCount() {
  void* const memory = ::mmap(nullptr, sizeof(std::atomic<long long>), PROT_READ | PROT_WRITE,
                              MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) throw std::bad_alloc();
  count_ = new (memory) std::atomic<long long>(0);
}

SharedCount::~SharedCount() { ::munmap(count_, sizeof(std::atomic<long long>)); }

void DoAtOnce(int count, const std::function<void(int process)>& work) {
  int start[2];
  ASSERT_EQ(::pipe(start), 0);
  std::vector<pid_t> children;
  for (int process = 0; process < count; ++process) {
    children.push_back(Fork(start, process, work));
    ASSERT_GT(children.back(), 0);
  }
  ::close(start[0]);
  ::close(start[1]);
  for (const pid_t child : children) {
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0) << "a process has failed";
  }
}

}  // namespace tarvo::test
