#pragma once

#include "session/jump_record.h"

// Where the reader was before each jump to another page, so that Back and Forward return there.
// Every pane has its own history; in Book both share that of pane 0.
namespace quillmere {

inline constexpr std::size_t kMaximumBackJumps = 50;

// Records the pane's position before a jump, and ends the forward path.
void PushJump(int pane);

// Return to the last recorded position, or to the one that Back left. False when there is none.
bool JumpBack(int pane);
bool JumpForward(int pane);

// Shows a recorded position; its page is clamped to the document.
void RestoreJump(int pane, const JumpRecord& record);

}  // namespace quillmere
