#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/pixel_rect.h"
#include "platform/pictures.h"
#include "session/placement.h"
#include "view/geometry.h"

// Where placements lie on the screen, and what is drawn of them over the page.
namespace quillmere {

// Pixels at 96 DPI.
inline constexpr int kHandleReach = 3;  // from a handle's point to its square's edge
inline constexpr int kGhostCross = 6;   // from the pointer to the end of each arm

inline constexpr double kGhostAlpha = 0.63;  // of a stamp that is dragged from the panel
inline constexpr int kTextGhostAlpha = 160;  // of 255

struct PixelPoint {
  std::int32_t x = 0;
  std::int32_t y = 0;
  bool operator==(const PixelPoint&) const = default;
};

// The client pixel of a handle.
PixelPoint PlacementHandlePoint(int pane, const Placement& placement, int handle);

// The square that a handle's point lies in the middle of; right and bottom are outside.
PixelRect handleSquare(const PixelPoint& point);

// The upright box around the turned one, in pixels from the pane's top left corner; right and
// bottom are outside.
PixelRect PlacementScreenBounds(int pane, const Placement& placement);

// A picture drawn over a page. Places are pixels from the pane's top left corner.
struct PictureDrawing {
  platform::SharedPicture picture;  // null when only the selection is drawn
  PanePoint centre;
  double width = 0;    // pixels
  double height = 0;   // pixels
  double degrees = 0;  // clockwise
  double alpha = 1;
  // Of a selected placement: a dotted frame through the corners, and the handles.
  bool selected = false;
  std::array<PixelPoint, 5> frame;  // closed
  std::array<PixelPoint, 8> handles;
};

// What lies over the pane's page and overlaps the rectangle, which counts from the pane's top left
// corner. Written placements appear only when they are selected: PDFium has drawn them.
std::vector<PictureDrawing> placementDrawings(int pane, const PixelRect& area);

// The stamp that is dragged from the panel over the page; nullopt when there is none.
std::optional<PictureDrawing> stampGhost(int pane);

// The text that a click would place, at the pointer, where a cross marks the start of its baseline.
struct TextGhost {
  std::u16string text;  // empty when a click would place none; the cross is drawn alone then
  std::int32_t fontIndex = 0;
  int pixelHeight = 1;
  std::uint32_t color = 0;  // 0xRRGGBB
  int alpha = 255;
  int turns = 0;     // clockwise quarter turns
  PixelPoint place;  // the start of the baseline, from the pane's top left corner
};
std::optional<TextGhost> textGhost(int pane);

// One line of text in some font, in pixels.
struct LineExtent {
  int width = 0;
  int ascent = 0;   // from the baseline up
  int descent = 0;  // and down
};
// The part of `area` that the ghost's text may touch, overhanging letters included; empty for none.
// Both rectangles count from the pane's top left corner.
PixelRect textGhostArea(const TextGhost& ghost, const LineExtent& extent, const PixelRect& area);

}  // namespace quillmere
