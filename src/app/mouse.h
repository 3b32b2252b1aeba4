#pragma once

#include <vector>

#include "app/menus.h"

// What the mouse does in the page area; all places are client pixels.
namespace quillmere {

enum class CursorKind {
  Default,  // the system chooses
  Arrow,
  Hand,
  TextBeam,
  SidewaysBeam,
  ResizeHorizontal,
  ResizeVertical,
  ResizeFalling,  // from the top left to the bottom right
  ResizeRising,
  Move,
  Rotate,
  Cross,
};

void pressLeft(int x, int y);
void pressMiddle(int x, int y);
void doubleClickLeft(int x, int y);
void movePointer(int x, int y);
// A movement with no button held.
void hoverPointer(int x, int y);
void releaseLeft(int x, int y);
void releaseMiddle(int x, int y);

// Makes the pane active and returns the rows of the menu to show there; empty outside pages.
std::vector<MenuRow> releaseRight(int x, int y);

// The side buttons: back and forward in the history of the pane under the pointer.
void pressSideButton(int x, bool forward);

// `delta` is how far the wheel turned, 120 for one notch.
void turnWheel(int x, int y, int delta, bool shift, bool control);

// The Shift key went down or up: with it held the mouse does something else.
void shiftChanged();

// Ends every drag, whatever took the mouse away.
void loseCapture();

CursorKind cursorAt(int x, int y);

}  // namespace quillmere
