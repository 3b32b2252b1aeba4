#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "driver/program.h"

// Message boxes and file dialogs, found and answered as a person would.
namespace quillmere::e2e {

struct Box {
  HWND window = nullptr;
  std::wstring title;
  std::wstring text;
  std::vector<std::wstring> buttons;  // without their mnemonic marks
};

// The program's message box, waited for; `window` is null when none came.
Box waitForBox(const Program& program);
// The box that is there now, if any.
Box boxNow(const Program& program);
// Presses a key in the box and waits until it has gone.
bool answerBox(const Box& box, WORD key, unsigned modifiers = 0);

// The shell's open dialog, waited for; null when none came.
HWND waitForFileDialog(const Program& program);
// Types a name into it and confirms; false when it did not go away.
bool chooseInFileDialog(HWND dialog, const std::wstring& name);
bool cancelFileDialog(HWND dialog);

}  // namespace quillmere::e2e
