#include "app/overlays.h"

#include <algorithm>
#include <iterator>
#include <utility>

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

void addPlacements(int pane, const PixelRect& area, std::vector<OverlayDrawing>& drawings) {
  std::vector<PictureDrawing> placements = placementDrawings(pane, area);
  std::move(placements.begin(), placements.end(), std::back_inserter(drawings));
}

void addStampGhost(int pane, const PixelRect&, std::vector<OverlayDrawing>& drawings) {
  if (auto ghost = stampGhost(pane)) drawings.emplace_back(std::move(*ghost));
}

void addTextGhost(int pane, const PixelRect&, std::vector<OverlayDrawing>& drawings) {
  if (auto ghost = textGhost(pane)) drawings.emplace_back(std::move(*ghost));
}

// They lie under the quads, in this order.
constexpr void (*kDrawings[])(int pane, const PixelRect& area,
                              std::vector<OverlayDrawing>& drawings) = {
    addPlacements, addStampGhost, addTextGhost};

}  // namespace

std::vector<OverlayDrawing> overlayDrawings(int pane, const PixelRect& area) {
  std::vector<OverlayDrawing> drawings;
  for (const auto add : kDrawings) add(pane, area, drawings);
  return drawings;
}

std::vector<OverlayQuad> overlayQuads(int pane) {
  std::vector<OverlayQuad> quads;
  for (const auto add : kOverlays) add(pane, quads);
  return quads;
}

bool anythingOver(int pane, const PixelRect& area) {
  return !overlayDrawings(pane, area).empty() || !overlayQuads(pane).empty();
}

}  // namespace quillmere
