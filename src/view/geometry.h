#pragma once

#include <cstdint>

#include "base/page_box.h"
#include "base/pixel_rect.h"

// Where panes and pages lie, and how pixels and places of a page map onto each other.
//
//   +------------+---------------------------------------+
//   | left panel | pane               ^                  |
//   |            |                    | panY             |
//   |            |                    v                  |
//   |            |         +--------------------+        |
//   |            |<------->| (left, top)        |        |
//   |            |  panX   |     page box       | zoom * |
//   |            |         |      ^ y           | height |
//   |            |         |      +--> x        |        |
//   |            |         +--------------------+        |
//   +------------+---------------------------------------+
//   | status bar                                         |
//
// Panes count pixels from their top left corner, downwards. Pages count points in PDF's user space,
// upwards, from a corner that need not be 0, 0: the page shows its box (pageBoxOf), turned by
// pageRotationOf quarter turns clockwise.
namespace quillmere {

inline constexpr float kMinimumZoom = 0.2f;
inline constexpr float kMaximumZoom = 5.0f;
inline constexpr double kZoomStepIn = 1.18;
inline constexpr double kZoomStepOut = 0.84745765;
inline constexpr double kFitMarginFactor = 0.96;
inline constexpr int kVerticalMargin = 8;       // pixels
inline constexpr int kFitHeightAllowance = 16;  // pixels
inline constexpr int kPanKeepVisible = 80;      // pixels
inline constexpr int kDividerWidth = 2;         // pixels
inline constexpr int kLeftSplitterWidth = 3;    // pixels
inline constexpr int kStampSplitterWidth = 3;   // pixels
inline constexpr int kFindBarHeight = 34;       // pixels

struct PageSize {
  double width = 0;   // points
  double height = 0;  // points
};

// A place in the page's own coordinates, PDF's user space: x to the right, y upwards before any
// turn. The page's corner need not be 0, 0.
struct PagePoint {
  double x = 0;  // points
  double y = 0;  // points
};

struct PanePoint {
  double x = 0;  // pixels from the pane's left edge
  double y = 0;  // pixels from the pane's top edge
};

bool leftPanelShown();
// Right edge of the left panel, its splitter included; 0 when it is hidden.
int leftPanelEdge();
// Bottom of the area that panes and panels share: the top of the status bar.
int pageAreaBottom();
// Top of that area: the bottom of the find bar.
int pageAreaTop();

// False only for pane 1 in SinglePage.
bool paneShown(int pane);
// The pane's rectangle in client pixels; empty when it is not shown.
PixelRect paneRect(int pane);
// The pane under client x: 0, 1, or -1 over the left panel or the divider.
int paneAt(int x);
// The pane that shows its page or background at a client place; -1 outside all of them.
int paneUnder(int x, int y);
// The divider's left edge in client pixels.
int dividerX();

// Low two bits of the pending turns of the page that the pane has open.
std::uint32_t pendingPageRotation(int pane);
// Turns that the pane displays, 0 to 3: pending page and document turns and the page's own.
std::uint32_t pageRotationOf(int pane);
// Turns to hand to PDFium, which adds the page's own: 0 to 3.
std::uint32_t renderRotationOf(int pane);

// What the pane shows of its page; empty without a page.
PageBox pageBoxOf(int pane);
// Displayed size of the pane's page; zero without a page.
PageSize pageSizeRotated(int pane);

// Limits a zoom to what the program offers.
float clampZoom(double zoom);

// Recomputes zoom and pan from the zoom mode. `fromBottom` shows the bottom of a page that is
// taller than the pane, and `widthDelta` is by how much the pane became wider.
void layoutPane(int pane, bool fromBottom, int widthDelta);

// Keeps part of the bitmap inside the pane. Does nothing when the pane has no bitmap.
void clampPan(int pane);

// Pane pixels to the page's own coordinates; both 0 when the pane has no page or no zoom.
PagePoint paneToPage(int pane, double x, double y);
// The page's own coordinates to pane pixels.
PanePoint pageToPane(int pane, double pageX, double pageY);
// Where the pane's bitmap shows that place: since the bitmap begins and ends on whole pixels, up to
// two pixels away from there. Without a bitmap it is the same.
PanePoint pageToBitmap(int pane, double pageX, double pageY);

}  // namespace quillmere
