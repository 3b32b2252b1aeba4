#pragma once

#include "base/pixel_rect.h"

// The panel left of the panes: bookmarks above binders, a bar between them and a splitter that
// changes its width. Positions are in client pixels.
namespace quillmere {

// The rectangles of a hidden part are empty.
struct LeftPanelParts {
  PixelRect bookmarksHeader;
  PixelRect bookmarksTree;
  PixelRect bar;  // between the two parts; empty unless both are shown
  PixelRect bindersHeader;
  PixelRect bindersTree;
};
LeftPanelParts leftPanelParts();

// Whether a press at client x grabs the splitter right of the panel.
bool onLeftSplitter(int x);
// Whether a press there grabs the bar between the two parts.
bool onLeftPanelBar(int x, int y);

// A drag of the splitter. Moves do nothing when no drag is in progress.
void startPanelWidthDrag(int x);
void movePanelWidthDrag(int x);
void endPanelWidthDrag();

// A drag of the bar.
void startPanelBarDrag(int y);
void movePanelBarDrag(int y);
void endPanelBarDrag();

}  // namespace quillmere
