#include "annot/placements.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "annot/annotation_image.h"
#include "annot/annotations.h"
#include "annot/idle_slice.h"
#include "annot/placement_record.h"
#include "annot/placement_text.h"
#include "annot/stamp_pictures.h"
#include "base/product.h"
#include "session/changes.h"
#include "session/document_slots.h"
#include "session/session.h"
#include "ui/boxes.h"
#include "view/render.h"

namespace quillmere {

namespace {

constexpr FPDF_ANNOTATION_SUBTYPE kSubtypes[] = {FPDF_ANNOT_STAMP};
constexpr int kPagesWhileIdle = 64;  // of some tens of microseconds each

// Nullopt for an annotation that this program did not write.
std::optional<Placement> placementOf(FPDF_ANNOTATION annotation) {
  if (FPDFAnnot_GetSubtype(annotation) != FPDF_ANNOT_STAMP) return std::nullopt;
  Placement placement;
  if (!ParsePlacementRecord(ReadAnnotString(annotation, kPlacementKey), placement)) {
    return std::nullopt;
  }
  return placement;
}

std::vector<Placement> placementsOn(FPDF_DOCUMENT document, std::int32_t pageIndex) {
  const PageHandle page = pageForAnnotations(document, pageIndex);
  std::vector<Placement> list;
  const int count = FPDFPage_GetAnnotCount(page.get());
  for (int i = 0; i < count; ++i) {
    std::optional<Placement> placement = placementOf(annotationAt(page.get(), i).get());
    if (!placement) continue;
    placement->annotIndex = i;
    list.push_back(*std::move(placement));
  }
  return list;
}

// Pending ones that the page has by now lie above those in the document.
void readPage(FPDF_DOCUMENT document, std::int32_t page) {
  std::vector<Placement> written = placementsOn(document, page);
  if (written.empty()) return;
  std::vector<Placement>& list = session.placements[page];
  if (session.selectedPlacementPage == page) {
    session.selectedPlacementIndex += static_cast<std::int32_t>(written.size());
  }
  list.insert(list.begin(), std::make_move_iterator(written.begin()),
              std::make_move_iterator(written.end()));
}

// Reads a page of the document that waits, once.
void readWaitingPage(std::int32_t page) {
  const FPDF_DOCUMENT document = session.waitingPlacements;
  session.placementDocument = document;
  if (!session.placementPagesRead.insert(page).second) return;
  readPage(document, page);
  releasePagesRead(document, session.placementPagesRead.size());
}

// Both in order.
std::vector<int> unreadOf(const std::vector<int>& pages) {
  const std::set<std::int32_t>& read = session.placementPagesRead;
  std::vector<int> unread;
  std::set_difference(pages.begin(), pages.end(), read.begin(), read.end(),
                      std::back_inserter(unread));
  return unread;
}

bool isPlacement(FPDF_DOCUMENT document, std::int32_t pageIndex, std::int32_t annotIndex) {
  const PageHandle page = pageForAnnotations(document, pageIndex);
  return placementOf(annotationAt(page.get(), annotIndex).get()).has_value();
}

// A stamp needs its picture before the annotation that has it goes.
bool takePicture(FPDF_DOCUMENT document, std::int32_t pageIndex, Placement& placement) {
  if (placement.kind != PlacementKind::Stamp || placement.image) return true;
  const ReachedPage page(document, pageIndex);
  const AnnotationHandle annotation = annotationAt(page.get(), placement.annotIndex);
  placement.image = ExtractAnnotImage(document, page.get(), annotation.get());
  return placement.image != nullptr;
}

}  // namespace

void LoadPlacements(FPDF_DOCUMENT document) {
  loadPlacementsLater(document);
  readWaitingPlacements();
}

std::vector<int> stampedPages(FPDF_DOCUMENT document) {
  return pagesWithAnnotations(document, kSubtypes);
}

void addPlacementsOf(FPDF_DOCUMENT document, const std::vector<int>& newPages) {
  if (document == nullptr || session.placementDocument != document) return;
  for (const int page : newPages) readPage(document, page);
}

bool hasPlacements(FPDF_DOCUMENT document) {
  if (document == session.waitingPlacements) readWaitingPlacements();
  if (document == session.placementDocument) {
    return std::any_of(session.placements.begin(), session.placements.end(),
                       [](const auto& onPage) { return !onPage.second.empty(); });
  }
  const std::vector<int> pages = stampedPages(document);
  return std::any_of(pages.begin(), pages.end(),
                     [&](int page) { return !placementsOn(document, page).empty(); });
}

void ClearPlacements() {
  session.placements.clear();
  session.placementDocument = nullptr;
  session.waitingPlacements = nullptr;
  session.placementPagesRead.clear();
  session.selectedPlacementPage = -1;
  session.selectedPlacementIndex = -1;
}

void loadPlacementsLater(FPDF_DOCUMENT document) {
  ClearPlacements();
  session.waitingPlacements = document;
}

void readWaitingPlacements() {
  const FPDF_DOCUMENT document = session.waitingPlacements;
  if (document == nullptr) return;
  session.placementDocument = document;
  for (const int page : unreadOf(stampedPages(document))) readWaitingPage(page);
  session.waitingPlacements = nullptr;
  session.placementPagesRead.clear();
}

void readWaitingPlacementsOf(FPDF_DOCUMENT document, std::int32_t page) {
  if (document != nullptr && document == session.waitingPlacements) readWaitingPage(page);
}

bool readFoundPlacements() {
  const std::vector<int> unread = unreadOf(pagesFoundSoFar(session.waitingPlacements, kSubtypes));
  IdleSlice slice(kPagesWhileIdle);
  for (const int page : unread) {
    readWaitingPage(page);
    if (slice.endsWithPage()) break;
  }
  return !unread.empty();
}

bool ClaimPlacementOwner() {
  const FPDF_DOCUMENT document = documentOf(session.activePane);
  if (document == nullptr) return false;
  readWaitingPlacementsOf(document, session.panes[session.activePane].openPage);
  if (document == session.placementDocument) return true;
  if (placementsPending(session.placementDocument)) {
    const BoxAnswer answer = showBox(
        u"Stamp or text placements on the other document haven't been saved yet, and will "
        u"be discarded if you continue.\n\nContinue and discard them?",
        kProductTitle, BoxButtons::OkCancel, BoxIcon::Warning);
    if (answer != BoxAnswer::Ok) return false;
  }
  LoadPlacements(document);
  return true;
}

Placement* selectedPlacement() {
  const auto found = session.placements.find(session.selectedPlacementPage);
  if (found == session.placements.end()) return nullptr;
  const auto index = static_cast<std::size_t>(session.selectedPlacementIndex);
  return index < found->second.size() ? &found->second[index] : nullptr;
}

void selectPlacement(std::int32_t page, std::int32_t index) {
  ClearPlacementSelection();
  session.selectedPlacementPage = page;
  session.selectedPlacementIndex = index;
  if (Placement* placement = selectedPlacement()) placement->selected = true;
}

void ClearPlacementSelection() {
  if (Placement* placement = selectedPlacement()) placement->selected = false;
  session.selectedPlacementPage = -1;
  session.selectedPlacementIndex = -1;
}

void DetachPlacement() {
  Placement* placement = selectedPlacement();
  const FPDF_DOCUMENT document = documentOf(session.activePane);
  if (placement == nullptr || placement->pending()) return;
  if (document == nullptr || document != session.placementDocument) return;
  const std::int32_t page = session.selectedPlacementPage;
  if (!takePicture(document, page, *placement)) return;
  if (!removePlacementAnnotation(document, page, placement->annotIndex)) return;
  placement->annotIndex = -1;
  placementsChanged(document);
}

bool removePlacementAnnotation(FPDF_DOCUMENT document, std::int32_t pageIndex,
                               std::int32_t annotIndex) {
  if (!isPlacement(document, pageIndex, annotIndex)) return false;
  separatePagesToAnnotate(document);
  {
    const ReachedPage page(document, pageIndex);
    if (!FPDFPage_RemoveAnnot(page.get(), annotIndex)) return false;
  }
  lowerPlacementIndexes(document, pageIndex, annotIndex);
  for (const int pane : panesHolding(document)) {
    markEdited(documentSlotOf(pane));
    break;
  }
  for (const int pane : panesHoldingPage(document, pageIndex)) redrawPicture(pane);
  return true;
}

void lowerPlacementIndexes(FPDF_DOCUMENT document, std::int32_t page, std::int32_t removed) {
  if (session.placementDocument != document) return;
  const auto found = session.placements.find(page);
  if (found == session.placements.end()) return;
  for (Placement& placement : found->second) {
    if (placement.annotIndex > removed) --placement.annotIndex;
  }
}

platform::SharedPicture placementPicture(Placement& placement) {
  if (placement.image) return placement.image;
  if (placement.kind == PlacementKind::Stamp) return stampBitmap(placement.stampIndex);
  placement.image = RenderTextBitmap(placement.text, placement.fontSize, placement.fontIndex,
                                     placement.colorIndex);
  return placement.image;
}

}  // namespace quillmere
