#pragma once

#include <array>
#include <optional>

#include "app/paint_plan.h"
#include "base/pixel_rect.h"

// Repainting no more than has changed: filling the margins beside a page and copying them to the
// screen takes as long as copying the page.
namespace quillmere {

// What a painting shows, as far as it decides what the next one changes.
struct WindowPicture {
  WindowPlan window;
  std::array<PanePlan, 2> panes;
  // Each shown pane has a page with nothing over it. Overlays may reach beyond the page.
  bool pagesOnly = false;
};
WindowPicture pictureNow();

// The part of the client area in which two pictures of it can differ; nullopt for all of it. The
// pages themselves always count as different.
std::optional<PixelRect> changedArea(const WindowPicture& before, const WindowPicture& now);

// To be called at the end of each painting of the client area, with what it showed.
void notePainted(const WindowPicture& picture);

// Makes the next pages appear: repaints what may have changed since the last painting if all of
// that is pages.
void repaintPages();

}  // namespace quillmere
