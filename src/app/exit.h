#pragma once

namespace quillmere {

// What stands between the wish to close the main window and its end. True when it may go; false
// when a file was handed over meanwhile, which is open then.
bool settleBeforeClose();

// What is kept and released when the main window goes, up to the end of PDFium.
void tearDown();

// The user logs off: what can be kept without a question is kept.
void settleForLogoff();

}  // namespace quillmere
