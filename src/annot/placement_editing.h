#pragma once

// Selecting, moving, turning, resizing and deleting placements with the stamp panel open, on the
// page that pane 0 shows in SinglePage. Places are client pixels.
namespace quillmere {

// A press of the left button. True when it took a handle or a placement and a drag began; otherwise
// the selection is cleared.
bool pressPlacement(int x, int y);
void movePlacementDrag(int x, int y);
void endPlacementDrag();

enum class PlacementCursor {
  None,  // the pointer is on no part of the selected placement
  Rotate,
  Move,
  ResizeHorizontal,
  ResizeFalling,  // from the top left to the bottom right
  ResizeVertical,
  ResizeRising,
};
PlacementCursor placementCursorAt(int x, int y);

// Removes the selected placement from its page.
void deleteSelectedPlacement();

}  // namespace quillmere
