#pragma once

#include <cstdint>
#include <variant>
#include <vector>

#include "annot/placement_view.h"
#include "base/pixel_rect.h"
#include "view/selection.h"

// What is painted over the page of a pane, as plain drawings and quads; the window code draws
// them.
namespace quillmere {

struct OverlayColor {
  std::uint8_t alpha = 0;
  std::uint8_t r = 0;
  std::uint8_t g = 0;
  std::uint8_t b = 0;
  bool operator==(const OverlayColor&) const = default;
};

inline constexpr OverlayColor kFindHitColor{0x78, 0xFF, 0xDC, 0x00};
inline constexpr OverlayColor kCurrentHitColor{0xB4, 0x9B, 0x32, 0xC8};
// Opacity, of 255, of the system's highlight colour over selected text.
inline constexpr std::uint8_t kSelectionAlpha = 130;

// Corners are pixels from the pane's top left corner.
struct OverlayQuad {
  TextQuad quad;
  OverlayColor color;
};

// Placements, as far as they overlap the rectangle, and the previews of what is about to be placed,
// in the order of painting. They lie under the quads.
using OverlayDrawing = std::variant<PictureDrawing, TextGhost>;
std::vector<OverlayDrawing> overlayDrawings(int pane, const PixelRect& area);

// Hits and selection over the pane's page, in the order of painting.
std::vector<OverlayQuad> overlayQuads(int pane);

// Whether any of these lies over the pane's page.
bool anythingOver(int pane, const PixelRect& area);

}  // namespace quillmere
