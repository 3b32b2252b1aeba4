#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "platform/pixels.h"
#include "session/document_slot.h"
#include "session/jump_record.h"
#include "session/markup_box.h"
#include "session/pdfium_handles.h"
#include "session/zoom_mode.h"

namespace quillmere {

// Pending clockwise quarter turns by zero-based page; only the low two bits count.
using PageRotations = std::map<std::int32_t, std::uint32_t>;

// One of the two places where a page is shown. The inherited document slot and `pageRotations` are
// used only in TwoDocuments; in the other modes `ActiveDocument` serves both panes. Everything else
// is used in every mode.
struct PaneSlot : DocumentSlot {
  std::int32_t currentPage = 0;  // zero-based, the number shown
  float zoom = 1.0f;             // pixels per PDF point
  float panX = 0;                // left edge of the page, in pixels from the pane's left edge
  float panY = 0;                // top edge of the page, in pixels from the pane's top edge
  ZoomMode zoomMode = kFitPage;
  std::uint32_t documentRotation = 0;  // pending quarter turns of the whole document
  PageRotations pageRotations;

  bool shiftPan = false;  // a drag pan of this pane is in progress
  std::int32_t shiftPanAnchorX = 0;
  std::int32_t shiftPanAnchorY = 0;
  float shiftPanStartX = 0;
  float shiftPanStartY = 0;

  platform::PixelSurfaceHandle pageBitmap;  // the rendered page; null when there is none
  std::int32_t pageBitmapWidth = 0;
  std::int32_t pageBitmapHeight = 0;

  PageHandle page;  // the open page; null when no page is loaded
  // Zero-based number of the open page, -1 without one. Entering Book on the last page, or a
  // refresh of a viewer, changes `currentPage` alone until the next turn. So code that acts on a
  // page's contents or leads to them uses this number.
  std::int32_t openPage = -1;
  TextOfPage textPage;         // null together with `page`, or when loading it failed
  std::int32_t pagesRead = 0;  // since memory was last given back
  // Where the open page's markups lie. Absent until somebody points at the page, and again after a
  // change: with thousands of marks, reading them takes longer than a movement of the mouse.
  std::optional<MarkupBoxes> markupBoxes;

  std::vector<JumpRecord> backHistory;     // most recent last
  std::vector<JumpRecord> forwardHistory;  // most recent last
};

// The document of SinglePage, Book and IndependentPages; empty in TwoDocuments.
struct ActiveDocument : DocumentSlot {
  PageRotations pageRotations;  // shared by both panes
};

}  // namespace quillmere
