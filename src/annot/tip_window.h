#pragma once

#include <string>

namespace quillmere {

// The one tip of the main window, a small window beside the pointer. Places are client pixels of
// the main window. Nothing happens when Windows refuses to make it.

// Shows the text beside a pointer at x, y, in place of what the tip showed before.
void showTip(const std::u16string& text, int x, int y);
// The tip goes along with the pointer.
void moveTip(int x, int y);
// Without effect when the tip is hidden.
void hideTip();

}  // namespace quillmere
