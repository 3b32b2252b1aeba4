#pragma once

#include "session/zoom_mode.h"

namespace quillmere {

// Multiplies the zoom and keeps the anchor, in pane pixels, still. The zoom mode turns to Custom
// Fit even when a limit holds the zoom where it is.
void zoomAround(int pane, double factor, double anchorX, double anchorY);

// One step around the centre of the bitmap.
void zoomIn(int pane);
void zoomOut(int pane);

// Sets the zoom mode of a pane and shows it.
void setZoomMode(int pane, ZoomMode zoomMode);

// The zoom slider: positions 0 to the last one.
int zoomSliderMaximum();
float zoomOfSliderPosition(int position);
int sliderPositionOfZoom(float zoom);
// The slider of the active pane was moved.
void zoomToSliderPosition(int position);

}  // namespace quillmere
