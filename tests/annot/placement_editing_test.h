#pragma once

#include <gtest/gtest.h>

#include <numbers>

#include "annot/placement_box.h"
#include "annot/placement_test.h"
#include "annot/placement_view.h"
#include "app/mouse.h"

namespace quillmere::test {

inline constexpr double kQuarter = std::numbers::pi / 2;

// Editing with the mouse, on a page at 100% whose top left corner lies 40 and 20 pixels from the
// pane's.
class PlacementEditingTest : public PlacementTest {
 protected:
  // A page with a written stamp of 100 by 60 points at 200, 400.
  void SetUp() override {
    document = openPlain(2);
    add(0, stampOf(quarters(), 200, 400, 100, 60));
    writeAll(document);
    session.active.dirty = false;
    session.active.altered = false;
    setView(0, 1.0f, 40.0f, 20.0f);
  }

  Placement& stamp(std::size_t index = 0) { return placement(0, index); }
  static ClientPoint centreOf(const Placement& placement) {
    const PagePoint centre = placementCentre(placement);
    return placeOf(centre.x, centre.y);
  }
  static ClientPoint handleOf(const Placement& placement, int handle) {
    const PixelPoint point = PlacementHandlePoint(0, placement, handle);
    return {point.x, point.y};
  }
  static void press(const ClientPoint& at) { pressLeft(at.x, at.y); }
  static void release(const ClientPoint& at) { releaseLeft(at.x, at.y); }
  static void drag(const ClientPoint& from, int dx, int dy) {
    press(from);
    movePointer(from.x + dx / 2, from.y + dy / 2);
    release({from.x + dx, from.y + dy});
  }
  void select() {
    press(centreOf(stamp()));
    release(centreOf(stamp()));
  }
  static void expectBox(const Placement& placement, double x, double y, double width,
                        double height) {
    EXPECT_NEAR(placement.x, x, 1e-3);
    EXPECT_NEAR(placement.y, y, 1e-3);
    EXPECT_NEAR(placement.width, width, 1e-3);
    EXPECT_NEAR(placement.height, height, 1e-3);
  }

  FPDF_DOCUMENT document = nullptr;
};

}  // namespace quillmere::test
