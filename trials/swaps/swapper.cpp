#include "swapper.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <new>
#include <random>
#include <stdexcept>
#include <utility>

namespace tarvo::test {
namespace {

using Shared = std::atomic<long long>;
static_assert(Shared::is_always_lock_free, "two processes share it");

Shared* MakeShared() {
  void* memory =
      ::mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) throw std::runtime_error("no memory to share");
  return new (memory) Shared(0);
}

bool Exchange(const std::string& a, const std::string& b) {
  return ::renameat2(AT_FDCWD, a.c_str(), AT_FDCWD, b.c_str(), RENAME_EXCHANGE) == 0;
}

// Works on for so long: a process that sleeps wakes up too late.
void Pass(std::chrono::nanoseconds time) {
  using Clock = std::chrono::steady_clock;
  for (const auto end = Clock::now() + time; Clock::now() < end;) continue;
}

}  // namespace

Swapper::Swapper(std::vector<Swap> swaps, std::string folder, std::uint32_t seed)
    : swaps_(std::move(swaps)), folder_(std::move(folder)), count_(MakeShared()) {
  const pid_t parent = ::getpid();
  process_ = ::fork();
  if (process_ < 0) throw std::runtime_error("no process can be made");
  if (process_ > 0) return;
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (::getppid() != parent) ::_exit(EXIT_FAILURE);
  Run(seed);
}

Swapper::~Swapper() {
  ::kill(process_, SIGKILL);
  while (::waitpid(process_, nullptr, 0) < 0 && errno == EINTR) continue;
  ::munmap(count_, sizeof(Shared));
}

void Swapper::Run(std::uint32_t seed) {
  std::mt19937 random(seed);
  std::uniform_int_distribution<std::size_t> number(0, swaps_.size() - 1);
  std::uniform_int_distribution<int> time(0, 100'000);
  for (;;) {
    const std::size_t next = number(random);
    MakeStandIn(next);
    if (Exchange(swaps_[next].place, StandIn(next))) {
      ++*count_;
      Pass(std::chrono::nanoseconds(time(random)));
      // Where the link has been removed meanwhile, what it stood for stays with the stand-ins.
      Exchange(swaps_[next].place, StandIn(next));
    }
    Pass(std::chrono::nanoseconds(time(random)));
  }
}

std::string Swapper::StandIn(std::size_t number) const {
  return folder_ + "/" + std::to_string(number);
}

bool Swapper::IsStandIn(std::size_t number) const {
  struct stat found {};
  if (::lstat(StandIn(number).c_str(), &found) != 0) return false;
  if (!swaps_[number].isHardLink) return S_ISLNK(found.st_mode);
  struct stat target {};
  return ::lstat(swaps_[number].target.c_str(), &target) == 0 && found.st_ino == target.st_ino;
}

void Swapper::MakeStandIn(std::size_t number) {
  if (IsStandIn(number)) return;
  const std::string path = StandIn(number);
  const Swap& swap = swaps_[number];
  ::rename(path.c_str(), (folder_ + "/away" + std::to_string(thrownAway_++)).c_str());
  const int failed = swap.isHardLink ? ::link(swap.target.c_str(), path.c_str())
                                     : ::symlink(swap.target.c_str(), path.c_str());
  if (failed != 0) ::_exit(EXIT_FAILURE);
}

}  // namespace tarvo::test
