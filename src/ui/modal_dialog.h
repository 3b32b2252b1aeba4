#pragma once

#include <cstdint>

struct HWND__;
struct HFONT__;
struct tagNMHDR;

// Small dialogs made by hand: plain windows with child controls that run a modal loop of their own.
namespace quillmere {

// The state of a dialog while it is open; it also prevents opening the dialog twice.
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
  int clientWidth = 0;   // pixels at 96 DPI, as are those of its controls
  int clientHeight = 0;  // likewise
  std::int32_t cancelResult = 0;

  // Makes the controls as children of `dialog.window` and returns the one that gets the focus.
  HWND__* (*createControls)(ModalDialog& dialog, void* context) = nullptr;
  // Handles a command from a control; true when it was handled. Calls endModalDialog to close the
  // dialog with a result. Null when there is only Cancel.
  bool (*handleCommand)(ModalDialog& dialog, std::uint16_t id, std::uint16_t notification,
                        void* context) = nullptr;
  // Handles a notification of a control; the result goes back to the control. Null when none of
  // them needs one.
  std::intptr_t (*handleNotify)(ModalDialog& dialog, tagNMHDR& notification,
                                void* context) = nullptr;
  void* context = nullptr;
};

// Shows the dialog, blocks until it is closed and returns its result. A tree or the find bar has
// the keyboard again afterwards if it had it before, otherwise the owner. Returns the cancel value
// at once when the dialog is already open or Windows refuses to make it.
std::int32_t runModalDialog(ModalDialog& dialog, const ModalDialogDesign& design, HWND__* owner);

// Stores the result and asks the dialog to close once the current message is done.
void endModalDialog(ModalDialog& dialog, std::int32_t result);

}  // namespace quillmere
