#include "test_process.h"

#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarvo::test {

TestProcess::TestProcess(const std::vector<std::string>& words,
                         const std::vector<std::string>& environment) {
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (const std::string& word : words) pointers.push_back(const_cast<char*>(word.c_str()));
  pointers.push_back(nullptr);
  const pid_t parent = ::getpid();
  process_ = ::fork();
  if (process_ != 0) return;
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  for (const std::string& setting : environment) ::putenv(const_cast<char*>(setting.c_str()));
  if (::getppid() == parent) ::execvp(pointers[0], pointers.data());
  ::_exit(EXIT_FAILURE);
}

void TestProcess::End(int signal) {
  if (process_ <= 0) return;
  ::kill(process_, signal);
  ::waitpid(process_, nullptr, 0);
  process_ = 0;
}

}  // namespace tarvo::test
