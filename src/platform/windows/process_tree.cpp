#include "platform/windows/process_tree.h"

#include <tlhelp32.h>

#include <cstdint>
#include <optional>

#include "platform/windows/handle.h"

namespace tarvo {
namespace {

// When a process began, in the system's ticks; nothing when it may not be asked.
std::optional<std::uint64_t> BeginOf(DWORD process) {
  const KernelHandle handle(::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process));
  FILETIME begin;
  FILETIME end;
  FILETIME kernel;
  FILETIME user;
  if (!IsOpen(handle) || !::GetProcessTimes(handle.get(), &begin, &end, &kernel, &user)) {
    return std::nullopt;
  }
  return std::uint64_t{begin.dwHighDateTime} << 32 | begin.dwLowDateTime;
}

// The identifier of a starter that has ended may have come to another process, which then began
// after those that it seems to have started.
bool CanHaveStarted(DWORD parent, DWORD child) {
  const auto parentBegin = BeginOf(parent);
  const auto childBegin = BeginOf(child);
  return !parentBegin || !childBegin || *parentBegin <= *childBegin;
}

}  // namespace

ProcessTree::ProcessTree() {
  const KernelHandle snapshot(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  if (!IsOpen(snapshot)) return;
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  for (BOOL more = ::Process32FirstW(snapshot.get(), &entry); more;
       more = ::Process32NextW(snapshot.get(), &entry)) {
    parents_[entry.th32ProcessID] = entry.th32ParentProcessID;
  }
}

bool ProcessTree::BelongsTo(DWORD process, DWORD tool) const {
  // A chain of starters that is longer is a circle of identifiers used again.
  constexpr int kMostGenerations = 100;
  DWORD ancestor = process;
  for (int i = 0; i < kMostGenerations; ++i) {
    if (ancestor == tool) return true;
    const auto found = parents_.find(ancestor);
    if (found == parents_.end() || found->second == 0) return false;
    if (!parents_.contains(found->second) || !CanHaveStarted(found->second, ancestor)) return false;
    ancestor = found->second;
  }
  return false;
}

}  // namespace tarvo
