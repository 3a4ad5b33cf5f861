#include "child_process.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <memory>
#include <stdexcept>

#include "base/runtime_error.h"

namespace tarvo::test {
namespace {

constexpr int kUnexpected = 254;
constexpr unsigned kNobody = 65534;

}  // namespace

int ErrorInChild(const std::function<void()>& step) {
  const pid_t child = ::fork();
  if (child == 0) {
    int number = 0;
    try {
      step();
    } catch (const RuntimeError& error) {
      number = error.Number();
    } catch (...) {
      number = kUnexpected;
    }
    ::_exit(number < kUnexpected ? number : kUnexpected);
  }
  int status = 0;
  const bool ended = child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status);
  EXPECT_TRUE(ended) << "the child did not end by itself";
  const int number = ended ? WEXITSTATUS(status) : kUnexpected;
  EXPECT_NE(number, kUnexpected) << "the child failed in another way than by a RuntimeError";
  return number;
}

int ErrorAsOrdinaryUser(const std::function<void()>& step) {
  return ErrorInChild([&] {
    const bool isRoot = ::geteuid() == 0;
    if (isRoot &&
        (::setgroups(0, nullptr) != 0 || ::setgid(kNobody) != 0 || ::setuid(kNobody) != 0))
      throw std::runtime_error("cannot become an ordinary user");
    step();
  });
}

std::string OutputOf(const std::string& command) {
  struct Close {
    void operator()(FILE* pipe) const { EXPECT_EQ(::pclose(pipe), 0); }
  };
  const std::unique_ptr<FILE, Close> pipe(::popen(command.c_str(), "r"));
  if (!pipe) throw std::runtime_error("cannot start " + command);
  std::string output;
  for (std::array<char, 256> part; std::size_t got = std::fread(part.data(), 1, 256, pipe.get());)
    output.append(part.data(), got);
  return output;
}

}  // namespace tarvo::test
