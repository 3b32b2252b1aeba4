#pragma once

namespace quillmere {

// What happens before the main window closes. True when it may close; false when a file was handed
// over meanwhile, which is then open.
bool settleBeforeClose();

// Saves and releases everything when the main window goes; shuts PDFium down last.
void tearDown();

// The user logs off: saves what can be saved without a question.
void settleForLogoff();

}  // namespace quillmere
