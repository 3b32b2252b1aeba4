#include "annot/place_stamp.h"

#include <algorithm>
#include <numbers>
#include <utility>

#include "annot/placement_box.h"
#include "annot/placements.h"
#include "annot/stamp_library.h"
#include "annot/stamp_pictures.h"
#include "session/changes.h"
#include "session/density.h"
#include "session/session.h"
#include "view/geometry.h"

namespace quillmere {

namespace {

constexpr int kPane = 0;

}  // namespace

PictureSize thumbnailSize(const StampEntry& entry, int panelWidth) {
  const auto width = static_cast<float>(std::max(entry.width, 1));
  const auto height = static_cast<float>(std::max(entry.height, 1));
  const auto room = static_cast<float>(std::max(panelWidth - 2 * scaled(kThumbnailMargin), 1));
  const float factor =
      std::min(static_cast<float>(scaled(kThumbnailHeight)) / height, room / width);
  return {std::max(1, static_cast<int>(width * factor)),
          std::max(1, static_cast<int>(height * factor))};
}

void PlaceStamp(std::int32_t stampIndex, double pageX, double pageY) {
  const PaneSlot& slot = session.panes[kPane];
  if (session.viewerRole || !slot.page || !stampBitmap(stampIndex)) return;
  if (!ClaimPlacementOwner()) return;
  const PictureSize shown = thumbnailSize(
      session.stampLibrary[static_cast<std::size_t>(stampIndex)], session.stampPanelWidth);
  Placement placement;
  placement.stampIndex = stampIndex;
  placement.width = static_cast<double>(shown.width) / slot.zoom;
  placement.height = static_cast<double>(shown.height) / slot.zoom;
  centrePlacement(placement, {pageX, pageY});
  placement.rotation = -static_cast<double>(pageRotationOf(kPane)) * std::numbers::pi / 2;
  ClampPlacementToPage(placement, slot.page.get());
  std::vector<Placement>& list = session.placements[slot.openPage];
  list.push_back(std::move(placement));
  selectPlacement(slot.openPage, static_cast<std::int32_t>(list.size()) - 1);
  placementsChanged(session.placementDocument);
}

}  // namespace quillmere
