#pragma once

#include <string>

namespace quillmere {

// The main window's one tip, a small window beside the pointer. Places are client pixels of the
// main window. Does nothing when Windows refuses to create it.

// Shows the text beside a pointer at x, y, replacing what the tip showed before.
void showTip(const std::u16string& text, int x, int y);
// Moves the tip along with the pointer.
void moveTip(int x, int y);
// Does nothing when the tip is hidden.
void hideTip();

}  // namespace quillmere
