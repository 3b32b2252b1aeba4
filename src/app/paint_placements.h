#pragma once

#include "base/pixel_rect.h"

struct HDC__;

namespace quillmere {

// Draws the placements that overlap the rectangle and the previews of what is about to be placed,
// with the pane's top left corner as the origin.
void DrawPlacements(HDC__* deviceContext, int pane, const PixelRect& paneRectangle);

}  // namespace quillmere
