#pragma once

#include <fpdfview.h>

#include <array>

#include "session/placement.h"
#include "view/geometry.h"

// Where a placement lies on its page.
//
//   0----1----2     The corners and middles of a box, before it turns about its centre. The number
//   |         |     is the handle's. The bottom edge is at y, the left edge at x.
//   7    +    3
//   |         |
//   6----5----4
namespace quillmere {

inline constexpr int kPlacementHandles = 8;

PagePoint placementCentre(const Placement& placement);

// The point of a handle on the turned box.
PagePoint placementHandle(const Placement& placement, int handle);

// Top left, top right, bottom right and bottom left of the turned box.
std::array<PagePoint, 4> placementCorners(const Placement& placement);

// The annotation's rectangle: the upright box around the turned one.
FS_RECTF PlacementAnnotRect(const Placement& placement);

// Maps the unit square onto the turned box.
FS_MATRIX placementMatrix(const Placement& placement);

// What is known of a text in its natural size, in points.
struct TextMetrics {
  double width = 0;
  double height = 0;
  double ascent = 0;  // from the top to the baseline
};
// Maps text that is set at the origin onto the turned box, stretching it to the box's size.
FS_MATRIX textDropMatrix(const Placement& placement, const TextMetrics& metrics);

// Moves the placement so that its centre lies on the page. Does nothing without a page.
void ClampPlacementToPage(Placement& placement, FPDF_PAGE page);

// Moves the placement so that its centre is there.
void centrePlacement(Placement& placement, const PagePoint& centre);

}  // namespace quillmere
