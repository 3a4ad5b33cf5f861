#pragma once

namespace tarvo {

// Whether a process is the tool, was started by it, directly or through others, or is in the
// session that the tool leads: a process whose own parent has ended is still found there. False for
// a process that is gone.
bool BelongsToTool(int process, int tool);

}  // namespace tarvo
