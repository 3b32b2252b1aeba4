#pragma once

struct tagMSG;

namespace quillmere {

// The main window of this process, in the role that the session says. False when Windows refuses.
bool registerMainWindowClass();
bool createMainWindow();

// Shows the window, maximised when the settings say so.
void showMainWindow(int showCommand);

// Offers a message to the modeless dialogs, in their order, then to the accelerators. True when one
// of them took it; the message is then not dispatched. The page is told of Shift, whichever window
// has the keyboard: Add Text has it while the page shows its preview.
bool takenBeforeDispatch(tagMSG& message);

// Runs until the process is told to quit; returns its exit code.
int runMessageLoop();

}  // namespace quillmere
