#include "app/overlays.h"

#include "nav/find_view.h"
#include "platform/main_window.h"

namespace quillmere {

namespace {

void addHits(int pane, std::vector<OverlayQuad>& quads) {
  for (const FindHitQuad& hit : findHitQuads(pane)) {
    quads.push_back({hit.quad, hit.current ? kCurrentHitColor : kFindHitColor});
  }
}

void addSelection(int pane, std::vector<OverlayQuad>& quads) {
  const std::vector<PaneBox> boxes = selectionBoxes(pane);
  if (boxes.empty()) return;
  const platform::SystemColor color = platform::highlightColor();
  for (const PaneBox& box : boxes) {
    quads.push_back({{{{box.left, box.top},
                       {box.right, box.top},
                       {box.right, box.bottom},
                       {box.left, box.bottom}}},
                     {kSelectionAlpha, color.r, color.g, color.b}});
  }
}

// In the order of painting.
constexpr void (*kOverlays[])(int pane, std::vector<OverlayQuad>& quads) = {addHits, addSelection};

}  // namespace

std::vector<OverlayQuad> overlayQuads(int pane) {
  std::vector<OverlayQuad> quads;
  for (const auto add : kOverlays) add(pane, quads);
  return quads;
}

}  // namespace quillmere
