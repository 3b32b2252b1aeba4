#include "view/zoom.h"

#include <algorithm>
#include <cmath>

#include "session/changes.h"
#include "session/session.h"
#include "view/geometry.h"
#include "view/render.h"

namespace quillmere {

namespace {

PanePoint bitmapCentre(const PaneSlot& slot) {
  return {std::trunc(slot.panX + slot.pageBitmapWidth / 2.0),
          std::trunc(slot.panY + slot.pageBitmapHeight / 2.0)};
}

void zoomAroundCentre(int pane, double factor) {
  const PanePoint centre = bitmapCentre(session.panes[pane]);
  zoomAround(pane, factor, centre.x, centre.y);
}

double stepsAboveMinimum(double zoom) {
  return std::log(zoom / kMinimumZoom) / std::log(kZoomStepIn);
}

}  // namespace

void zoomAround(int pane, double factor, double anchorX, double anchorY) {
  PaneSlot& slot = session.panes[pane];
  if (!slot.page || !(slot.zoom > 0)) return;
  const float before = slot.zoom;
  slot.zoom = clampZoom(before * factor);
  const double effective = static_cast<double>(slot.zoom) / before;
  slot.panX = static_cast<float>((slot.panX - anchorX) * effective + anchorX);
  slot.panY = static_cast<float>((slot.panY - anchorY) * effective + anchorY);
  if (slot.zoomMode != kCustomFit) {
    slot.zoomMode = kCustomFit;
    commandsChanged();
  }
  renderPane(pane);
  clampPan(pane);
  zoomChanged();
}

void zoomIn(int pane) {
  zoomAroundCentre(pane, kZoomStepIn);
}

void zoomOut(int pane) {
  zoomAroundCentre(pane, kZoomStepOut);
}

void setZoomMode(int pane, ZoomMode zoomMode) {
  session.panes[pane].zoomMode = zoomMode;
  layoutAndRender(pane);
  commandsChanged();
  zoomChanged();
}

int zoomSliderMaximum() {
  static const int maximum = static_cast<int>(std::ceil(stepsAboveMinimum(kMaximumZoom)));
  return maximum;
}

float zoomOfSliderPosition(int position) {
  return clampZoom(kMinimumZoom * std::pow(kZoomStepIn, position));
}

int sliderPositionOfZoom(float zoom) {
  if (!(zoom > kMinimumZoom)) return 0;
  return std::min(static_cast<int>(stepsAboveMinimum(zoom) + 0.5), zoomSliderMaximum());
}

void zoomToSliderPosition(int position) {
  const int pane = session.activePane;
  const double zoom = session.panes[pane].zoom;
  zoomAroundCentre(pane, zoomOfSliderPosition(position) / zoom);
}

}  // namespace quillmere
