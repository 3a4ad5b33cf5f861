#pragma once

#include <windows.h>

#include <unordered_map>

namespace tarvo {

// Which process has started which, as it is at one moment.
class ProcessTree {
 public:
  ProcessTree();

  // Whether a process is `tool`, or was started by it or by a process that was. A process whose
  // starter has ended belongs to nobody.
  bool BelongsTo(DWORD process, DWORD tool) const;

 private:
  std::unordered_map<DWORD, DWORD> parents_;
};

}  // namespace tarvo
