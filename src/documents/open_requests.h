#pragma once

#include <string>
#include <vector>

#include "store/working_documents.h"

// Opens that the user asks for.
namespace quillmere {

// Opens one document as the user asked, in its shelved state when there is one. From here on it has
// its absolute path. The user is told of a network location that does not answer.
bool openRequested(const std::u16string& requested, int pane, WorkingDocsMode workingDocsMode,
                   bool askBeforeReplace);

// The full paths of those files that the user does not refuse at the Internet gate, in their order.
// A silent share holds the window for one timeout at most; the gate is not asked about its files.
std::vector<std::u16string> filesPastGate(const std::vector<std::u16string>& paths);

// Opens the first of several files in `pane`. The others are listed among the documents in use and
// leave the recent list, also when the first fails.
void openSeveral(const std::vector<std::u16string>& paths, int pane);

// Files dropped at client x; outside the panes counts as pane 0. The others are listed in the same
// way unless the first fails.
void openDropped(const std::vector<std::u16string>& paths, int x);
void openDroppedOnPane(const std::vector<std::u16string>& paths, int pane);

// Opens a path that another instance handed over; an empty one does not even raise the window.
void openHandedOver(const std::u16string& path);

// Handles what had to wait: opens files in the order in which they came, then closes the window if
// it was asked to. Called from the main message loop.
void openWaiting();

// Asks for files and opens them in `pane`.
void openWithDialog(int pane);

}  // namespace quillmere
