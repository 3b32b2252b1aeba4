#include "annot/placement_editing.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <numbers>
#include <vector>

#include "annot/placement_box.h"
#include "annot/placement_view.h"
#include "annot/placements.h"
#include "session/changes.h"
#include "session/session.h"
#include "view/geometry.h"

namespace quillmere {

namespace {

constexpr int kPane = 0;
constexpr int kRotationHandle = 0;
constexpr double kLeastHalfSide = 2.5;  // points
constexpr double kHandleDegrees[kPlacementHandles] = {0, 270, 315, 0, 45, 90, 135, 180};

bool panelOpenAtPage() {
  return session.stampPanelVisible && session.viewMode == ViewMode::SinglePage &&
         session.panes[kPane].page;
}

bool editingPossible() {
  return panelOpenAtPage() && documentOf(kPane) == session.placementDocument;
}

// Placements of the page that is open; null when they cannot be edited, or there are none.
std::vector<Placement>* editablePlacements() {
  if (!editingPossible()) return nullptr;
  const auto found = session.placements.find(session.panes[kPane].openPage);
  return found == session.placements.end() ? nullptr : &found->second;
}

// The selected placement, if it is on the page that is open.
Placement* editableSelection() {
  if (!editingPossible()) return nullptr;
  if (session.selectedPlacementPage != session.panes[kPane].openPage) return nullptr;
  return selectedPlacement();
}

int handleAt(const Placement& placement, int x, int y) {
  for (int handle = 0; handle < kPlacementHandles; ++handle) {
    if (handleSquare(PlacementHandlePoint(kPane, placement, handle)).contains(x, y)) return handle;
  }
  return -1;
}

bool onBody(const Placement& placement, int x, int y) {
  const PixelRect rect = paneRect(kPane);
  return PlacementScreenBounds(kPane, placement).contains(x - rect.left, y - rect.top);
}

// Of a place about the middle of the placement's bounds, in radians.
double angleAbout(const Placement& placement, int x, int y) {
  const PixelRect rect = paneRect(kPane);
  const PixelRect bounds = PlacementScreenBounds(kPane, placement);
  const double centreX = rect.left + (bounds.left + bounds.right) / 2.0;
  const double centreY = rect.top + (bounds.top + bounds.bottom) / 2.0;
  return std::atan2(y - centreY, x - centreX);
}

void beginDrag(const Placement& placement, int x, int y) {
  PlacementDrag& drag = session.placementDrag;
  drag = {};
  drag.pressX = x;
  drag.pressY = y;
  drag.startX = placement.x;
  drag.startY = placement.y;
  drag.startWidth = placement.width;
  drag.startHeight = placement.height;
  drag.startRotation = placement.rotation;
  beginGesture(Gesture::Placement, x, y);
}

bool pressHandle(std::vector<Placement>& list, std::size_t index, int x, int y) {
  const Placement& placement = list[index];
  const int handle = handleAt(placement, x, y);
  if (handle < 0) return false;
  session.selectedPlacementPage = session.panes[kPane].openPage;
  session.selectedPlacementIndex = static_cast<std::int32_t>(index);
  beginDrag(placement, x, y);
  PlacementDrag& drag = session.placementDrag;
  drag.rotating = handle == kRotationHandle;
  if (drag.rotating) {
    drag.startAngle = angleAbout(placement, x, y);
  } else {
    drag.resizeHandle = handle;
  }
  return true;
}

bool pressBody(std::vector<Placement>& list, std::size_t index, int x, int y) {
  if (!onBody(list[index], x, y)) return false;
  selectPlacement(session.panes[kPane].openPage, static_cast<std::int32_t>(index));
  beginDrag(list[index], x, y);
  session.placementDrag.moving = true;
  pictureChanged();
  return true;
}

void moveTo(Placement& placement, int x, int y) {
  const PlacementDrag& drag = session.placementDrag;
  const PanePoint start = pageToPane(kPane, drag.startX, drag.startY);
  const PagePoint place = paneToPage(kPane, start.x + x - drag.pressX, start.y + y - drag.pressY);
  placement.x = place.x;
  placement.y = place.y;
  ClampPlacementToPage(placement, session.panes[kPane].page.get());
}

void turnTo(Placement& placement, int x, int y) {
  const PlacementDrag& drag = session.placementDrag;
  placement.rotation = angleAbout(placement, x, y) - drag.startAngle + drag.startRotation;
}

bool isOneOf(int handle, std::initializer_list<int> handles) {
  return std::find(handles.begin(), handles.end(), handle) != handles.end();
}

// Half sides and the shift of the centre along the box's axes, in pixels.
struct Resizing {
  double halfWidth;
  double halfHeight;
  double across = 0;
  double down = 0;
};

Resizing resized(int handle, double u, double v, double zoom) {
  const PlacementDrag& drag = session.placementDrag;
  const double least = kLeastHalfSide * zoom;
  Resizing result{zoom * drag.startWidth / 2, zoom * drag.startHeight / 2};
  const bool right = isOneOf(handle, {2, 3, 4});
  const bool bottom = isOneOf(handle, {4, 5, 6});
  if (right || isOneOf(handle, {6, 7})) {
    result.halfWidth = std::max(result.halfWidth + (right ? u : -u) / 2, least);
    result.across = u / 2;
  }
  if (bottom || isOneOf(handle, {1, 2})) {
    result.halfHeight = std::max(result.halfHeight + (bottom ? v : -v) / 2, least);
    result.down = v / 2;
  }
  return result;
}

void resizeTo(Placement& placement, int x, int y) {
  const PlacementDrag& drag = session.placementDrag;
  const double zoom = session.panes[kPane].zoom;
  const double angle = placement.rotation + pageRotationOf(kPane) * std::numbers::pi / 2;
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  const double dx = x - drag.pressX;
  const double dy = y - drag.pressY;
  const Resizing result = resized(drag.resizeHandle, dx * c + dy * s, dy * c - dx * s, zoom);
  const PanePoint before =
      pageToPane(kPane, drag.startX + drag.startWidth / 2, drag.startY + drag.startHeight / 2);
  const PagePoint centre = paneToPage(kPane, before.x + result.across * c - result.down * s,
                                      before.y + result.across * s + result.down * c);
  placement.width = 2 * result.halfWidth / zoom;
  placement.height = 2 * result.halfHeight / zoom;
  centrePlacement(placement, centre);
  ClampPlacementToPage(placement, session.panes[kPane].page.get());
}

// A placement's turn and the page's decide the direction in which its handle moves.
PlacementCursor resizeCursor(const Placement& placement, int handle) {
  constexpr PlacementCursor kCursors[] = {
      PlacementCursor::ResizeHorizontal, PlacementCursor::ResizeFalling,
      PlacementCursor::ResizeVertical, PlacementCursor::ResizeRising};
  const double turned =
      (pageRotationOf(kPane) * std::numbers::pi / 2 + placement.rotation) * 180 / std::numbers::pi;
  double degrees = std::fmod(turned + kHandleDegrees[handle], 180);
  if (degrees < 0) degrees += 180;
  return kCursors[std::lround(degrees / 45) & 3];
}

void eraseSelected(FPDF_DOCUMENT document) {
  const auto found = session.placements.find(session.selectedPlacementPage);
  found->second.erase(found->second.begin() + session.selectedPlacementIndex);
  if (found->second.empty()) session.placements.erase(found);
  session.selectedPlacementPage = -1;
  session.selectedPlacementIndex = -1;
  placementsChanged(document);
}

}  // namespace

bool pressPlacement(int x, int y) {
  if (!panelOpenAtPage() || paneUnder(x, y) != kPane) return false;
  readWaitingPlacementsOf(documentOf(kPane), session.panes[kPane].openPage);
  if (!editingPossible()) return false;
  if (std::vector<Placement>* list = editablePlacements()) {
    for (std::size_t index = list->size(); index-- > 0;) {
      if ((*list)[index].selected && pressHandle(*list, index, x, y)) return true;
      if (pressBody(*list, index, x, y)) return true;
    }
  }
  if (session.selectedPlacementPage >= 0) {
    ClearPlacementSelection();
    pictureChanged();
  }
  return false;
}

void movePlacementDrag(int x, int y) {
  if (session.gesture.kind != Gesture::Placement) return;
  PlacementDrag& drag = session.placementDrag;
  if (editableSelection() == nullptr) return endPlacementDrag();
  drag.started = drag.started || x != drag.pressX || y != drag.pressY;
  if (!drag.started) return;
  DetachPlacement();
  Placement& placement = *editableSelection();
  if (drag.moving) {
    moveTo(placement, x, y);
  } else if (drag.rotating) {
    turnTo(placement, x, y);
  } else {
    resizeTo(placement, x, y);
  }
  pictureChanged();
}

void endPlacementDrag() {
  endGesture(Gesture::Placement);
  session.placementDrag = {};
}

PlacementCursor placementCursorAt(int x, int y) {
  const Placement* placement = editableSelection();
  if (placement == nullptr || paneUnder(x, y) != kPane) return PlacementCursor::None;
  const int handle = handleAt(*placement, x, y);
  if (handle == kRotationHandle) return PlacementCursor::Rotate;
  if (handle > 0) return resizeCursor(*placement, handle);
  return onBody(*placement, x, y) ? PlacementCursor::Move : PlacementCursor::None;
}

void deleteSelectedPlacement() {
  const Placement* placement = editableSelection();
  if (session.viewerRole || placement == nullptr) return;
  const FPDF_DOCUMENT document = session.placementDocument;
  if (!placement->pending() &&
      !removePlacementAnnotation(document, session.selectedPlacementPage, placement->annotIndex)) {
    return;
  }
  endPlacementDrag();
  eraseSelected(document);
}

}  // namespace quillmere
