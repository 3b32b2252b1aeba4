#pragma once

#include "base/pixel_rect.h"

// The stamp panel right of the page, and the splitter that changes its width. Positions are in
// client pixels.
namespace quillmere {

// Empty while the panel is hidden.
PixelRect stampPanelRect();

// Whether a press there grabs the splitter.
bool onStampSplitter(int x, int y);

// A drag of the splitter. Moves do nothing when no drag is in progress.
void startStampSplitterDrag(int x);
void moveStampSplitterDrag(int x);
void endStampSplitterDrag();

}  // namespace quillmere
