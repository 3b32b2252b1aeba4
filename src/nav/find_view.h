#pragma once

#include <vector>

#include "view/selection.h"

// Where hits stand on the screen.
namespace quillmere {

// Brings the current hit into view when it stands on the pane's page.
void FindScrollToCurrent(int pane);

// What is painted over a pane: where hits stand, in pixels from the pane's top left corner.
struct FindHitQuad {
  TextQuad quad;
  bool current = false;
};
std::vector<FindHitQuad> findHitQuads(int pane);

}  // namespace quillmere
