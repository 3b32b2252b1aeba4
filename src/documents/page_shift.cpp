#include "documents/page_shift.h"

#include <map>
#include <utility>
#include <vector>

#include "annot/placements.h"
#include "session/document_slots.h"
#include "session/session.h"
#include "view/rotation.h"

namespace quillmere {

namespace {

template <typename Entry>
void shiftKeys(std::map<std::int32_t, Entry>& byPage, const PageShift& shift) {
  std::map<std::int32_t, Entry> shifted;
  for (auto& [page, entry] : byPage) {
    if (const auto now = shiftedPage(page, shift)) shifted.emplace(*now, std::move(entry));
  }
  byPage = std::move(shifted);
}

void shiftPlacements(FPDF_DOCUMENT document, const PageShift& shift) {
  if (session.placementDocument != document) return;
  if (session.selectedPlacementPage >= 0) {
    const auto selected = shiftedPage(session.selectedPlacementPage, shift);
    if (!selected) ClearPlacementSelection();
    if (selected) session.selectedPlacementPage = *selected;
  }
  shiftKeys(session.placements, shift);
}

void shiftTurns(int pane, const PageShift& shift) {
  shiftKeys(pageRotationsOf(pane), shift);
  if (PageRotations* waiting = waitingTurnsOf(pane)) shiftKeys(*waiting, shift);
}

void shiftJumps(std::vector<JumpRecord>& jumps, const PageShift& shift) {
  std::vector<JumpRecord> kept;
  for (JumpRecord jump : jumps) {
    const auto page = shiftedPage(jump.page, shift);
    if (!page) continue;
    jump.page = *page;
    kept.push_back(jump);
  }
  jumps = std::move(kept);
}

}  // namespace

std::optional<std::int32_t> shiftedPage(std::int32_t page, const PageShift& shift) {
  if (page < shift.first) return page;
  if (shift.added < 0 && page == shift.first) return std::nullopt;
  return page + shift.added;
}

void shiftPages(int pane, const PageShift& shift) {
  const FPDF_DOCUMENT document = documentOf(pane);
  shiftPlacements(document, shift);
  shiftTurns(pane, shift);
  for (const int each : panesHolding(document)) {
    shiftJumps(session.panes[each].backHistory, shift);
    shiftJumps(session.panes[each].forwardHistory, shift);
  }
}

}  // namespace quillmere
