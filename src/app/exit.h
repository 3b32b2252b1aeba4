#pragma once

namespace quillmere {

// What happens before the main window closes. False when it stays: the user wants it to, a document
// could not be saved, or a file was handed over while the user was asked what to save. True means
// that it closes for good, since the shelf is empty then.
bool settleBeforeClose();

// Saves and releases everything when the main window goes; shuts PDFium down last.
void tearDown();

// The user logs off: saves what can be saved without a question.
void settleForLogoff();

// Opens in a fresh process what was handed over once the window could not stay any more. The last
// thing that this process does.
void handOnWaitingFiles();

}  // namespace quillmere
