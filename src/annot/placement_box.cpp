#include "annot/placement_box.h"

#include <algorithm>
#include <cmath>

namespace quillmere {

namespace {

// Places of the handles on the box, in half sides from its centre; y counts downwards.
struct HandlePlace {
  int x;
  int y;
};
constexpr HandlePlace kHandles[kPlacementHandles] = {{-1, -1}, {0, -1}, {1, -1}, {1, 0},
                                                     {1, 1},   {0, 1},  {-1, 1}, {-1, 0}};
constexpr int kCornerHandles[] = {0, 2, 4, 6};

}  // namespace

PagePoint placementCentre(const Placement& placement) {
  return {placement.x + placement.width / 2, placement.y + placement.height / 2};
}

PagePoint placementHandle(const Placement& placement, int handle) {
  const HandlePlace& place = kHandles[handle];
  const double c = std::cos(placement.rotation);
  const double s = std::sin(placement.rotation);
  const double across = place.x * placement.width / 2;
  const double down = place.y * placement.height / 2;
  const PagePoint centre = placementCentre(placement);
  return {centre.x + across * c - down * s, centre.y - across * s - down * c};
}

std::array<PagePoint, 4> placementCorners(const Placement& placement) {
  std::array<PagePoint, 4> corners;
  std::transform(std::begin(kCornerHandles), std::end(kCornerHandles), corners.begin(),
                 [&](int handle) { return placementHandle(placement, handle); });
  return corners;
}

FS_RECTF PlacementAnnotRect(const Placement& placement) {
  const double c = std::abs(std::cos(placement.rotation));
  const double s = std::abs(std::sin(placement.rotation));
  const PagePoint centre = placementCentre(placement);
  const double across = c * placement.width / 2 + s * placement.height / 2;
  const double up = c * placement.height / 2 + s * placement.width / 2;
  return {static_cast<float>(centre.x - across), static_cast<float>(centre.y + up),
          static_cast<float>(centre.x + across), static_cast<float>(centre.y - up)};
}

FS_MATRIX placementMatrix(const Placement& placement) {
  const double c = std::cos(placement.rotation);
  const double s = std::sin(placement.rotation);
  const double width = placement.width;
  const double height = placement.height;
  const PagePoint centre = placementCentre(placement);
  return {static_cast<float>(width * c),
          static_cast<float>(-width * s),
          static_cast<float>(height * s),
          static_cast<float>(height * c),
          static_cast<float>(centre.x - width * c / 2 - height * s / 2),
          static_cast<float>(centre.y + width * s / 2 - height * c / 2)};
}

FS_MATRIX textDropMatrix(const Placement& placement, const TextMetrics& metrics) {
  const double c = std::cos(placement.rotation);
  const double s = std::sin(placement.rotation);
  const double acrossScale = metrics.width > 0 ? placement.width / metrics.width : 1;
  const double upScale = metrics.height > 0 ? placement.height / metrics.height : 1;
  const double descent = std::max(0.0, metrics.height - metrics.ascent);
  const double halfWidth = metrics.width / 2;
  const double rise = metrics.height / 2 - descent;  // of the box's centre above the baseline
  const PagePoint centre = placementCentre(placement);
  return {static_cast<float>(c * acrossScale),
          static_cast<float>(-s * acrossScale),
          static_cast<float>(s * upScale),
          static_cast<float>(c * upScale),
          static_cast<float>(centre.x - c * acrossScale * halfWidth - s * upScale * rise),
          static_cast<float>(centre.y + s * acrossScale * halfWidth - c * upScale * rise)};
}

void ClampPlacementToPage(Placement& placement, FPDF_PAGE page) {
  FS_RECTF box{};
  if (page == nullptr || !FPDF_GetPageBoundingBox(page, &box)) return;
  const PagePoint centre = placementCentre(placement);
  centrePlacement(placement,
                  {std::clamp<double>(centre.x, box.left, std::max(box.left, box.right)),
                   std::clamp<double>(centre.y, box.bottom, std::max(box.bottom, box.top))});
}

void centrePlacement(Placement& placement, const PagePoint& centre) {
  placement.x = centre.x - placement.width / 2;
  placement.y = centre.y - placement.height / 2;
}

}  // namespace quillmere
