#include "app/overlays.h"

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

void addPlacements(int pane, const PixelRect& area, std::vector<PictureDrawing>& pictures) {
  pictures = placementDrawings(pane, area);
}

void addStampGhost(int pane, const PixelRect&, std::vector<PictureDrawing>& pictures) {
  if (auto ghost = stampGhost(pane)) pictures.push_back(std::move(*ghost));
}

constexpr void (*kPictures[])(int pane, const PixelRect& area,
                              std::vector<PictureDrawing>& pictures) = {addPlacements,
                                                                        addStampGhost};

}  // namespace

std::vector<PictureDrawing> overlayPictures(int pane, const PixelRect& area) {
  std::vector<PictureDrawing> pictures;
  for (const auto add : kPictures) add(pane, area, pictures);
  return pictures;
}

std::vector<OverlayQuad> overlayQuads(int pane) {
  std::vector<OverlayQuad> quads;
  for (const auto add : kOverlays) add(pane, quads);
  return quads;
}

}  // namespace quillmere
