#pragma once

#include <vector>

#include "view/selection.h"

// Where hits are on the screen.
namespace quillmere {

// Scrolls the current hit into view if it is on the pane's page.
void FindScrollToCurrent(int pane);

// What is painted over a pane: the places of hits, in pixels from the pane's top left corner.
struct FindHitQuad {
  TextQuad quad;
  bool current = false;
};
std::vector<FindHitQuad> findHitQuads(int pane);

}  // namespace quillmere
