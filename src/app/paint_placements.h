#pragma once

#include "base/pixel_rect.h"

struct HDC__;

// Drawing placements and what is about to be placed, with the pane's top left corner as the origin.
namespace quillmere {

// Those that overlap the rectangle, and the stamp that is dragged over the page.
void DrawPlacements(HDC__* deviceContext, int pane, const PixelRect& paneRectangle);

// The text that a click would place, with a cross at the pointer.
void drawTextGhost(HDC__* deviceContext, int pane);

}  // namespace quillmere
