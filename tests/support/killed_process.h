#pragma once

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>

namespace tarvo::test {

// Does the work in a process of its own and gives the signal that ended it; 0 when it came to its
// end.
template <typename Work>
int SignalThatEnds(Work&& work) {
  const pid_t child = ::fork();
  if (child == 0) {
    try {
      work();
    } catch (...) {
      ::_exit(EXIT_FAILURE);
    }
    ::_exit(EXIT_SUCCESS);
  }
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
  EXPECT_TRUE(WIFSIGNALED(status) || WEXITSTATUS(status) == EXIT_SUCCESS) << "it has thrown";
  return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

// Lets the system kill this process after a time.
inline void HaveMyselfKilledAfter(std::chrono::nanoseconds time) {
  sigevent event{};
  event.sigev_notify = SIGEV_SIGNAL;
  event.sigev_signo = SIGKILL;
  timer_t timer{};
  if (::timer_create(CLOCK_MONOTONIC, &event, &timer) != 0) ::_exit(EXIT_FAILURE);
  itimerspec when{};
  when.it_value.tv_sec = static_cast<time_t>(time.count() / 1'000'000'000);
  when.it_value.tv_nsec = static_cast<long>(time.count() % 1'000'000'000) + 1;
  if (::timer_settime(timer, 0, &when, nullptr) != 0) ::_exit(EXIT_FAILURE);
}

}  // namespace tarvo::test
