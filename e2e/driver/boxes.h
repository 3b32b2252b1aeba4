#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "driver/program.h"

// Finds message boxes and file dialogs and answers them as a user would.
namespace quillmere::e2e {

struct Box {
  HWND window = nullptr;
  std::wstring title;
  std::wstring text;
  std::vector<std::wstring> buttons;  // without ampersands
};

// Waits for the program's message box; `window` is null when none came.
Box waitForBox(const Program& program);
// The box that is there now, if any.
Box boxNow(const Program& program);
// Presses a key in the box and waits until it is gone.
bool answerBox(const Box& box, WORD key, unsigned modifiers = 0);

// Waits for the shell's open dialog; null when none came.
HWND waitForFileDialog(const Program& program);
// Types a name into it and confirms; false when it did not close.
bool chooseInFileDialog(HWND dialog, const std::wstring& name);
bool cancelFileDialog(HWND dialog);

}  // namespace quillmere::e2e
