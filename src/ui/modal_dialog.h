#pragma once

#include <cstdint>

struct HWND__;
struct HFONT__;
struct tagNMHDR;

// Small dialogs made by hand: plain windows with child controls that run a modal loop of their own.
namespace quillmere {

// A dialog while it is open, and the guard against opening it twice.
struct ModalDialog {
  HWND__* window = nullptr;  // null when it is closed
  HWND__* owner = nullptr;   // the window that it disables
  HFONT__* font = nullptr;   // of its controls; owned
  std::int32_t result = 0;   // starts at the value that means cancel
};

// What a dialog is made of. Enter presses the push button that has the keyboard, otherwise the one
// with the default style, whatever its id.
struct ModalDialogDesign {
  const wchar_t* className = nullptr;
  const wchar_t* title = nullptr;
  int clientWidth = 0;   // pixels at 96 an inch, as are those of its controls
  int clientHeight = 0;  // likewise
  std::int32_t cancelResult = 0;

  // Makes the controls as children of `dialog.window` and returns the one that gets the focus.
  HWND__* (*createControls)(ModalDialog& dialog, void* context) = nullptr;
  // Handles a command from a control, and says so by true; a choice ends with endModalDialog. Null
  // when Cancel is all there is.
  bool (*handleCommand)(ModalDialog& dialog, std::uint16_t id, std::uint16_t notification,
                        void* context) = nullptr;
  // Handles a notification of a control; the result goes back to the control. Null when none of
  // them needs one.
  std::intptr_t (*handleNotify)(ModalDialog& dialog, tagNMHDR& notification,
                                void* context) = nullptr;
  void* context = nullptr;
};

// Shows the dialog and blocks until it is closed; the result is what it was ended with. A tree or
// the find bar has the keyboard again afterwards if it had it before, otherwise the owner. While it
// is open already, and when Windows refuses, the cancel value comes back at once.
std::int32_t runModalDialog(ModalDialog& dialog, const ModalDialogDesign& design, HWND__* owner);

// Stores the result and asks the dialog to close once the present message is done.
void endModalDialog(ModalDialog& dialog, std::int32_t result);

}  // namespace quillmere
