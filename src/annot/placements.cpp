#include "annot/placements.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "annot/annotation_image.h"
#include "annot/annotations.h"
#include "annot/placement_record.h"
#include "annot/placement_text.h"
#include "annot/stamp_pictures.h"
#include "base/product.h"
#include "session/changes.h"
#include "session/document_slots.h"
#include "session/page_memory.h"
#include "session/session.h"
#include "ui/boxes.h"
#include "view/render.h"

namespace quillmere {

namespace {

constexpr FPDF_ANNOTATION_SUBTYPE kSubtypes[] = {FPDF_ANNOT_STAMP};
constexpr int kPagesReadBetweenReleases = 400;

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
  const ReachedPage page(document, pageIndex);
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

void readPage(FPDF_DOCUMENT document, std::int32_t page) {
  std::vector<Placement> list = placementsOn(document, page);
  if (!list.empty()) session.placements[page] = std::move(list);
}

bool isPlacement(FPDF_DOCUMENT document, std::int32_t pageIndex, std::int32_t annotIndex) {
  const ReachedPage page(document, pageIndex);
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
  ClearPlacements();
  session.placementDocument = document;
  int read = 0;
  for (const int page : stampedPages(document)) {
    readPage(document, page);
    if (++read % kPagesReadBetweenReleases != 0) continue;
    const std::vector<int> panes = panesHolding(document);
    if (!panes.empty()) noteDocumentRead(panes.front());
  }
}

std::vector<int> stampedPages(FPDF_DOCUMENT document) {
  return pagesWithAnnotations(document, kSubtypes);
}

void addPlacementsOf(FPDF_DOCUMENT document, const std::vector<int>& newPages) {
  if (document == nullptr || session.placementDocument != document) return;
  for (const int page : newPages) readPage(document, page);
}

bool hasPlacements(FPDF_DOCUMENT document) {
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
  session.selectedPlacementPage = -1;
  session.selectedPlacementIndex = -1;
}

void loadPlacementsLater(FPDF_DOCUMENT document) {
  ClearPlacements();
  session.waitingPlacements = document;
}

void readWaitingPlacements() {
  if (session.waitingPlacements != nullptr) LoadPlacements(session.waitingPlacements);
}

bool ClaimPlacementOwner() {
  const FPDF_DOCUMENT document = documentOf(session.activePane);
  if (document == nullptr) return false;
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
