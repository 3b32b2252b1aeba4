#pragma once

#include <string>
#include <string_view>

#include "base/pixel_rect.h"

// The note of the markup under the pointer.
namespace quillmere {

// Called when the pointer moves to a client place with no button held: shows the note of the markup
// there, or hides the tip when there is none.
void ShowMarkupTip(int clientX, int clientY);

// Hides the tip because the user pressed a key or did something else; it stays hidden until the
// pointer moves.
void HideMarkupTip();
// Hides the tip because the note that it shows has changed or gone.
void forgetMarkupTip();

// The part of a note that a tip shows: its beginning, and no more lines than a screen has room for.
std::u16string tipText(std::u16string_view note);

// Where a tip of this size goes for a pointer at x, y: below it to the right, moved to stay on the
// screen, or above the pointer where it would otherwise cover it. `besideX` and `besideY` are the
// distances. All in screen pixels.
PixelRect placeTip(int x, int y, int width, int height, int besideX, int besideY,
                   const PixelRect& screen);

}  // namespace quillmere
