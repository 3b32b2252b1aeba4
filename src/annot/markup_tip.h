#pragma once

#include <string>
#include <string_view>

#include "base/pixel_rect.h"

// The note of the markup under the pointer.
namespace quillmere {

// For a movement of the pointer with no button held, to a client place: shows the note of the
// markup there, or hides the tip where there is none.
void ShowMarkupTip(int clientX, int clientY);

// Hides the tip because of something that the person does; it stays hidden until the pointer moves
// on.
void HideMarkupTip();
// Hides it because what it told of has changed or gone.
void forgetMarkupTip();

// As much of a note as a tip shows.
std::u16string tipText(std::u16string_view note);

// Where a tip of this size goes for a pointer at x, y: right of it and below, moved to stay on the
// screen, and above the pointer where it would lie under it otherwise. `besideX` and `besideY` are
// the distances. All in screen pixels.
PixelRect placeTip(int x, int y, int width, int height, int besideX, int besideY,
                   const PixelRect& screen);

}  // namespace quillmere
