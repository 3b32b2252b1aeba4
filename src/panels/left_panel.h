#pragma once

#include "base/pixel_rect.h"

// The panel left of the panes: bookmarks above binders, a bar between them and a splitter that
// changes its width. Places are client pixels.
namespace quillmere {

// Everything that a hidden part has is empty.
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

// A drag of the splitter. Moves without one under way are without effect.
void startPanelWidthDrag(int x);
void movePanelWidthDrag(int x);
void endPanelWidthDrag();

// A drag of the bar.
void startPanelBarDrag(int y);
void movePanelBarDrag(int y);
void endPanelBarDrag();

}  // namespace quillmere
