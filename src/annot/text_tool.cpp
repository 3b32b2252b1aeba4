#include "annot/text_tool.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "annot/placement_box.h"
#include "annot/placement_fonts.h"
#include "annot/placement_record.h"
#include "annot/placement_text.h"
#include "annot/placements.h"
#include "platform/keyboard.h"
#include "session/changes.h"
#include "session/session.h"
#include "view/geometry.h"

namespace quillmere {

namespace {

constexpr int kPane = 0;

bool armedOver(int x, int y) {
  return session.textTool.armed && session.viewMode == ViewMode::SinglePage &&
         paneUnder(x, y) == kPane && session.panes[kPane].page;
}

// The box of a text whose baseline starts at a point.
void placeAtBaseline(Placement& placement, const PagePoint& start, const TextMetrics& metrics) {
  const double c = std::cos(placement.rotation);
  const double s = std::sin(placement.rotation);
  const double descent = std::max(0.0, metrics.height - metrics.ascent);
  const double halfWidth = metrics.width / 2;
  const double halfHeight = metrics.height / 2;
  placement.width = metrics.width;
  placement.height = metrics.height;
  placement.x = start.x - s * descent + halfHeight * s + halfWidth * c - halfWidth;
  placement.y = start.y - c * descent - halfWidth * s + halfHeight * c - halfHeight;
}

}  // namespace

bool textToolPlaces(int x, int y) {
  return armedOver(x, y) && !platform::shiftDown();
}

bool pressTextTool(int x, int y) {
  if (!textToolPlaces(x, y)) return false;
  const PixelRect rect = paneRect(kPane);
  const PagePoint point = paneToPage(kPane, x - rect.left, y - rect.top);
  const AppSettings& settings = session.settings;
  const std::uint32_t turns =
      pageRotationOf(kPane) + 4 - (session.textTool.extraTurns & kQuarterTurnBits);
  PlaceTextDrop(session.panes[kPane].openPage, point.x, point.y, session.textTool.text,
                settings.textSizePt, static_cast<std::int32_t>(settings.textFontIndex),
                static_cast<std::int32_t>(settings.textColorIndex), turns);
  return true;
}

bool turnTextTool(int x, int y) {
  if (!armedOver(x, y)) return false;
  session.textTool.extraTurns = (session.textTool.extraTurns + 1) & kQuarterTurnBits;
  pictureChanged();
  return true;
}

void moveTextTool(int x, int y) {
  TextTool& tool = session.textTool;
  if (!tool.armed || (tool.pointerKnown && tool.x == x && tool.y == y)) return;
  tool.x = x;
  tool.y = y;
  tool.pointerKnown = true;
  pictureChanged();
}

void changeTextToolShift() {
  if (session.textTool.armed && session.textTool.pointerKnown) pictureChanged();
}

void leaveTextTool() {
  if (!session.textTool.pointerKnown) return;
  session.textTool.pointerKnown = false;
  pictureChanged();
}

void PlaceTextDrop(std::int32_t page, double pageX, double pageY, const std::u16string& text,
                   std::int32_t fontSize, std::int32_t fontIndex, std::int32_t colorIndex,
                   std::uint32_t turns) {
  if (session.viewerRole || isBlankText(text) || !ClaimPlacementOwner()) return;
  Placement placement;
  placement.kind = PlacementKind::TextDrop;
  placement.text = text;
  placement.fontSize = std::clamp(fontSize, kLeastFontSize, kLargestFontSize);
  placement.fontIndex = fontIndex >= 0 && fontIndex < kPlacementFonts ? fontIndex : 0;
  const auto colors = static_cast<std::int32_t>(session.settings.textColors.size());
  placement.colorIndex = colorIndex >= 0 && colorIndex < colors ? colorIndex : 0;
  placement.rotation = -static_cast<double>(turns & kQuarterTurnBits) * std::numbers::pi / 2;
  placeAtBaseline(placement, {pageX, pageY},
                  measureTextDrop(text, placement.fontSize, placement.fontIndex));
  placement.image =
      RenderTextBitmap(text, placement.fontSize, placement.fontIndex, placement.colorIndex);
  ClampPlacementToPage(placement, session.panes[session.activePane].page.get());
  session.placements[page].push_back(std::move(placement));
  placementsChanged(session.placementDocument);
}

}  // namespace quillmere
