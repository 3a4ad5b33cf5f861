#pragma once

#include <functional>
#include <string>

namespace tarvo::test {

// Before or after the system has done what it was called for.
enum class CallMoment { kBefore, kAfter };

// Does the work in a process of its own and kills that at a call by which files or folders come,
// go or change: at the one with a number, counted from 1 where `work` begins, after `prepare`.
// Gives the name of the call; "" when the process has come to its end before. Fails the running
// test when the process cannot be traced or ends otherwise.
std::string KillAtSystemCall(const std::function<void()>& prepare,
                             const std::function<void()>& work, int number, CallMoment moment);

}  // namespace tarvo::test
