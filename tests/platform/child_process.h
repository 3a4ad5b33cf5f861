#pragma once

#include <functional>
#include <string>

namespace tarvo::test {

// Runs a step in a child process and gives the number of the RuntimeError that it throws there, 0
// when it throws none; fails the running test when the child ends in any other way.
int ErrorInChild(const std::function<void()>& step);

// The same as a user to whom file permissions apply: root has them all, so the child becomes
// nobody.
int ErrorAsOrdinaryUser(const std::function<void()>& step);

// What a command of the shell prints; fails the running test when the command fails.
std::string OutputOf(const std::string& command);

}  // namespace tarvo::test
