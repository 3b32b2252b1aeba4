#include "annot/placement_view.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "annot/place_stamp.h"
#include "annot/placement_box.h"
#include "annot/placement_text.h"
#include "annot/placements.h"
#include "annot/stamp_library.h"
#include "annot/stamp_pictures.h"
#include "annot/text_tool.h"
#include "session/density.h"
#include "session/session.h"

namespace quillmere {

namespace {

constexpr double kHalfTurnDegrees = 180;
constexpr double kQuarterTurnDegrees = 90;
// Farther than any screen reaches; what lies there need not be exact.
constexpr double kFarthestPixel = 1e9;

std::int32_t pixel(double value) {
  return static_cast<std::int32_t>(std::clamp(value, -kFarthestPixel, kFarthestPixel));
}

// Halves go away from zero.
PixelPoint rounded(const PanePoint& point) {
  return {pixel(std::round(point.x)), pixel(std::round(point.y))};
}

PanePoint inPane(int pane, const PagePoint& point) {
  return pageToPane(pane, point.x, point.y);
}

// What is drawn of a placement lies where its annotation will, on the page's bitmap.
PanePoint onBitmap(int pane, const PagePoint& point) {
  return pageToBitmap(pane, point.x, point.y);
}

bool overlap(const PixelRect& a, const PixelRect& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

// Pictures may lie this far outside their bounds, as they follow the page's bitmap.
PixelRect grown(const PixelRect& bounds) {
  constexpr std::int32_t kReach = 2;  // pixels
  return {bounds.left - kReach, bounds.top - kReach, bounds.right + kReach, bounds.bottom + kReach};
}

// A box after clockwise quarter turns about the origin.
PixelRect turned(const PixelRect& upright, int quarterTurns) {
  switch (quarterTurns) {
    case 1:
      return {-upright.bottom, upright.left, -upright.top, upright.right};
    case 2:
      return {-upright.right, -upright.bottom, -upright.left, -upright.top};
    case 3:
      return {upright.top, -upright.right, upright.bottom, -upright.left};
    default:
      return upright;
  }
}

double degreesOf(int pane, const Placement& placement) {
  const double own = std::remainder(placement.rotation, 2 * std::numbers::pi) * kHalfTurnDegrees /
                     std::numbers::pi;
  return pageRotationOf(pane) * kQuarterTurnDegrees + own;
}

void addSelection(int pane, const Placement& placement, PictureDrawing& drawing) {
  const PixelRect rect = paneRect(pane);
  const std::array<PagePoint, 4> corners = placementCorners(placement);
  drawing.selected = true;
  for (std::size_t i = 0; i < drawing.frame.size(); ++i) {
    drawing.frame[i] = rounded(onBitmap(pane, corners[i % corners.size()]));
  }
  for (int handle = 0; handle < kPlacementHandles; ++handle) {
    const PixelPoint point = PlacementHandlePoint(pane, placement, handle);
    drawing.handles[static_cast<std::size_t>(handle)] = {point.x - rect.left, point.y - rect.top};
  }
}

PictureDrawing drawingOf(int pane, Placement& placement) {
  PictureDrawing drawing;
  const double zoom = session.panes[pane].zoom;
  if (placement.pending()) drawing.picture = placementPicture(placement);
  drawing.centre = onBitmap(pane, placementCentre(placement));
  drawing.width = placement.width * zoom;
  drawing.height = placement.height * zoom;
  drawing.degrees = degreesOf(pane, placement);
  if (placement.selected) addSelection(pane, placement, drawing);
  return drawing;
}

}  // namespace

PixelPoint PlacementHandlePoint(int pane, const Placement& placement, int handle) {
  const PixelRect rect = paneRect(pane);
  const PanePoint point = inPane(pane, placementHandle(placement, handle));
  return rounded({point.x + rect.left, point.y + rect.top});
}

PixelRect handleSquare(const PixelPoint& point) {
  const int reach = scaled(kHandleReach);
  return {point.x - reach, point.y - reach, point.x + reach + 1, point.y + reach + 1};
}

PixelRect PlacementScreenBounds(int pane, const Placement& placement) {
  double left = 1e18;
  double top = 1e18;
  double right = -1e18;
  double bottom = -1e18;
  for (const PagePoint& corner : placementCorners(placement)) {
    const PanePoint point = inPane(pane, corner);
    left = std::min(left, point.x);
    top = std::min(top, point.y);
    right = std::max(right, point.x);
    bottom = std::max(bottom, point.y);
  }
  return {pixel(std::floor(left)), pixel(std::floor(top)), pixel(std::ceil(right)),
          pixel(std::ceil(bottom))};
}

std::vector<PictureDrawing> placementDrawings(int pane, const PixelRect& area) {
  std::vector<PictureDrawing> drawings;
  const PaneSlot& slot = session.panes[pane];
  if (session.viewMode != ViewMode::SinglePage || !slot.page) return drawings;
  if (documentOf(pane) != session.placementDocument) return drawings;
  const auto found = session.placements.find(slot.openPage);
  if (found == session.placements.end()) return drawings;
  for (Placement& placement : found->second) {
    if (!placement.pending() && !placement.selected) continue;
    if (!overlap(grown(PlacementScreenBounds(pane, placement)), area)) continue;
    drawings.push_back(drawingOf(pane, placement));
  }
  return drawings;
}

std::optional<PictureDrawing> stampGhost(int pane) {
  const StampDrag& drag = session.stampDrag;
  if (pane != 0 || !session.panes[pane].page) return std::nullopt;
  if (!drag.stampOverPage || !isStampIndex(drag.stamp)) return std::nullopt;
  const PixelRect rect = paneRect(pane);
  const PictureSize size = thumbnailSize(session.stampLibrary[static_cast<std::size_t>(drag.stamp)],
                                         session.stampPanelWidth);
  PictureDrawing ghost;
  ghost.picture = stampBitmap(drag.stamp);
  ghost.centre = {static_cast<double>(drag.x - rect.left), static_cast<double>(drag.y - rect.top)};
  ghost.width = size.width;
  ghost.height = size.height;
  ghost.alpha = kGhostAlpha;
  return ghost;
}

std::optional<TextGhost> textGhost(int pane) {
  const TextTool& tool = session.textTool;
  if (pane != 0 || !textToolPlaces(tool.x, tool.y) || !tool.pointerKnown) return std::nullopt;
  const AppSettings& settings = session.settings;
  const PixelRect rect = paneRect(pane);
  TextGhost ghost;
  if (!isBlankText(tool.text)) ghost.text = tool.text;
  ghost.fontIndex = static_cast<std::int32_t>(settings.textFontIndex);
  ghost.pixelHeight =
      std::max(1, static_cast<int>(settings.textSizePt * double{session.panes[pane].zoom} + 0.5));
  ghost.color = textColor(static_cast<std::int32_t>(settings.textColorIndex));
  ghost.alpha = kTextGhostAlpha;
  ghost.turns = static_cast<int>(tool.extraTurns & kQuarterTurnBits);
  ghost.place = {tool.x - rect.left, tool.y - rect.top};
  return ghost;
}

PixelRect textGhostArea(const TextGhost& ghost, const LineExtent& extent, const PixelRect& area) {
  const int room = (extent.ascent + extent.descent) / 2 + 2;
  const PixelRect upright{-room, -extent.ascent - room, extent.width + room, extent.descent + room};
  const PixelRect box = turned(upright, ghost.turns);
  const PixelPoint& start = ghost.place;
  return {std::max(start.x + box.left, area.left), std::max(start.y + box.top, area.top),
          std::min(start.x + box.right, area.right), std::min(start.y + box.bottom, area.bottom)};
}

}  // namespace quillmere
