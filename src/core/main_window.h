#pragma once

namespace quillmere {

// The main window of this process, in the role that the session says. False when Windows refuses.
bool registerMainWindowClass();
bool createMainWindow();

// Shows the window, maximised when the settings say so.
void showMainWindow(int showCommand);

// Runs until the process is told to quit; the result is its exit code.
int runMessageLoop();

}  // namespace quillmere
