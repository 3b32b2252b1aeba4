#pragma once

#include "session/zoom_mode.h"

namespace quillmere {

// Multiplies the zoom and keeps the anchor, in pane pixels, still. The zoom mode becomes Custom Fit
// even when a limit keeps the zoom as it is.
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
// Called when the user moves the slider of the active pane.
void zoomToSliderPosition(int position);

}  // namespace quillmere
