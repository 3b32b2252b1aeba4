#include "annot/markups.h"

#include <fpdf_text.h>
#include <quillmere_engine.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include "annot/annotations.h"
#include "annot/placements.h"
#include "session/changes.h"
#include "session/document_slots.h"
#include "session/session.h"
#include "view/geometry.h"
#include "view/render.h"
#include "view/selection.h"
#include "view/text_rects.h"

namespace quillmere {

namespace {

constexpr double kLeastSide = 0.5;  // points
constexpr int kHiddenFlags = FPDF_ANNOT_FLAG_HIDDEN | FPDF_ANNOT_FLAG_NOVIEW;

MarkupStyle styleOf(std::uint32_t colorIndex, unsigned alpha) {
  const ColorEntry& color = session.settings.markupColors[markupColorRow(colorIndex)];
  return {color.r, color.g, color.b, alpha};
}

// Corners in the order top left, top right, bottom left, bottom right.
FS_QUADPOINTSF quadOf(const PageBox& box) {
  const auto l = static_cast<float>(box.left);
  const auto t = static_cast<float>(box.top);
  const auto r = static_cast<float>(box.right);
  const auto b = static_cast<float>(box.bottom);
  return {l, t, r, t, l, b, r, b};
}

// One quad for each stretch of a line. PDFium reports a selected line break as a rectangle without
// a size, which would draw nothing and could only be hit at a point.
std::vector<FS_QUADPOINTSF> quadsOf(FPDF_TEXTPAGE textPage, const TextRange& range) {
  std::vector<FS_QUADPOINTSF> quads;
  for (const PageBox& box : textRects(textPage, range.first, range.count)) {
    if (box.right - box.left < kLeastSide || box.top - box.bottom < kLeastSide) continue;
    quads.push_back(quadOf(box));
  }
  return quads;
}

// The direction of most of the text in page coordinates: 0 along x, 1 along y.
int textTurns(FPDF_TEXTPAGE textPage, const TextRange& range) {
  std::int32_t along = 0;
  std::int32_t across = 0;
  for (std::int32_t i = range.first; i < range.first + range.count; ++i) {
    FS_MATRIX matrix{};
    if (FPDFText_IsGenerated(textPage, i) == 1) continue;
    if (!FPDFText_GetMatrix(textPage, i, &matrix)) continue;
    ++(std::abs(matrix.a) < std::abs(matrix.b) ? across : along);
  }
  return across > along ? 1 : 0;
}

// Fills a new annotation; false when PDFium refuses part of it. Readers do not print annotations
// without the Print flag.
bool describeMarkup(FPDF_ANNOTATION annotation, const std::vector<FS_QUADPOINTSF>& quads,
                    const MarkupStyle& style, int turns) {
  bool done = FPDFAnnot_SetColor(annotation, FPDFANNOT_COLORTYPE_Color, style.red, style.green,
                                 style.blue, style.alpha);
  for (const FS_QUADPOINTSF& quad : quads) {
    done = done && FPDFAnnot_AppendAttachmentPoints(annotation, &quad);
  }
  return done && FPDFAnnot_SetFlags(annotation, FPDF_ANNOT_FLAG_PRINT) &&
         QuillmereEngine_WriteMarkAppearance(annotation, turns);
}

// Appends the annotation to the page, whole or not at all.
bool addMarkup(FPDF_PAGE page, FPDF_ANNOTATION_SUBTYPE subtype,
               const std::vector<FS_QUADPOINTSF>& quads, const MarkupStyle& style, int turns) {
  const AnnotationHandle annotation(FPDFPage_CreateAnnot(page, subtype));
  if (!annotation) return false;
  const int index = FPDFPage_GetAnnotCount(page) - 1;
  if (describeMarkup(annotation.get(), quads, style, turns)) {
    QuillmereEngine_MakeAnnotIndirect(page, index);
    return true;
  }
  FPDFPage_RemoveAnnot(page, index);
  return false;
}

void noteMarkupEdit(DocumentSlot& slot, std::int32_t page) {
  const FPDF_DOCUMENT document = slot.document.get();
  markEdited(slot);
  for (const int pane : panesHoldingPage(document, page)) redrawPicture(pane);
  markupsChanged(document, page);
}

void appendBoxes(FPDF_ANNOTATION annotation, std::int32_t index, std::vector<MarkupBox>& boxes) {
  const std::size_t quads = FPDFAnnot_CountAttachmentPoints(annotation);
  for (std::size_t i = 0; i < quads; ++i) {
    FS_QUADPOINTSF quad{};
    if (!FPDFAnnot_GetAttachmentPoints(annotation, i, &quad)) continue;
    const auto [left, right] = std::minmax({quad.x1, quad.x2, quad.x3, quad.x4});
    const auto [bottom, top] = std::minmax({quad.y1, quad.y2, quad.y3, quad.y4});
    boxes.push_back({index, left, bottom, right, top});
  }
}

MarkupBoxes readMarkupBoxes(FPDF_PAGE page) {
  MarkupBoxes read;
  read.annotations = FPDFPage_GetAnnotCount(page);
  for (std::int32_t i = 0; i < read.annotations; ++i) {
    const AnnotationHandle annotation = annotationAt(page, i);
    if (!isMarkup(annotation.get())) continue;
    if ((FPDFAnnot_GetFlags(annotation.get()) & kHiddenFlags) != 0) continue;
    appendBoxes(annotation.get(), i, read.boxes);
  }
  return read;
}

const std::vector<MarkupBox>& markupBoxesOf(PaneSlot& slot) {
  const bool known =
      slot.markupBoxes && slot.markupBoxes->annotations == FPDFPage_GetAnnotCount(slot.page.get());
  if (!known) slot.markupBoxes = readMarkupBoxes(slot.page.get());
  return slot.markupBoxes->boxes;
}

bool contains(const MarkupBox& box, const PagePoint& point) {
  return point.x >= box.left && point.x <= box.right && point.y >= box.bottom && point.y <= box.top;
}

// -1 when the markup has no pop-up. A file may name any annotation as one.
std::int32_t popupOf(FPDF_PAGE page, std::int32_t annot) {
  const int popup = QuillmereEngine_PopupIndex(page, annot);
  const AnnotationHandle annotation = annotationAt(page, popup);
  return FPDFAnnot_GetSubtype(annotation.get()) == FPDF_ANNOT_POPUP ? popup : -1;
}

// The object of a removed annotation may still be written to the file, so remove its text first.
bool removeAnnotation(FPDF_PAGE page, std::int32_t index) {
  {
    const AnnotationHandle annotation = annotationAt(page, index);
    if (FPDFAnnot_HasKey(annotation.get(), "Contents")) {
      const FPDF_WCHAR nothing = 0;
      FPDFAnnot_SetStringValue(annotation.get(), "Contents", &nothing);
    }
    QuillmereEngine_RemoveAnnotEntry(annotation.get(), "RC");
  }
  return FPDFPage_RemoveAnnot(page, index);
}

// Removes the higher index first, since that leaves the lower one unchanged.
bool removeWithPopup(FPDF_DOCUMENT document, std::int32_t pageIndex, std::int32_t annot) {
  const ReachedPage page(document, pageIndex);
  if (!isMarkup(annotationAt(page.get(), annot).get())) return false;
  const auto [lower, higher] = std::minmax({annot, popupOf(page.get(), annot)});
  for (const std::int32_t index : {higher, lower}) {
    if (index < 0) continue;
    if (!removeAnnotation(page.get(), index)) return false;
    lowerPlacementIndexes(document, pageIndex, index);
  }
  return true;
}

}  // namespace

std::uint32_t markupColorRow(std::uint32_t index) {
  return index < session.settings.markupColors.size() ? index : 0;
}

int limitedMarkupOpacity(int percent) {
  return std::clamp(percent, kLeastMarkupOpacity, kFullMarkupOpacity);
}

MarkupStyle highlightStyle() {
  const int opacity = limitedMarkupOpacity(session.settings.highlightOpacity);
  return styleOf(session.settings.highlightColorIndex,
                 static_cast<unsigned>(opacity * 255 / kFullMarkupOpacity));
}

MarkupStyle strikethroughStyle() {
  return styleOf(session.settings.strikeColorIndex, 255);
}

void CreateMarkup(FPDF_ANNOTATION_SUBTYPE subtype, unsigned red, unsigned green, unsigned blue,
                  unsigned alpha) {
  const int pane = session.selection.pane;
  if (session.viewerRole || pane < 0 || pane > 1 || !hasTextSelection(pane)) return;
  separatePagesToAnnotate(documentOf(pane));
  const std::optional<TextRange> range = selectedRange(pane);
  const PaneSlot& slot = session.panes[pane];
  const FPDF_TEXTPAGE textPage = slot.textPage.get();
  if (!range || !slot.page || textPage == nullptr) return;
  const std::vector<FS_QUADPOINTSF> quads = quadsOf(textPage, *range);
  if (quads.empty()) return;
  if (!addMarkup(slot.page.get(), subtype, quads, {red, green, blue, alpha},
                 textTurns(textPage, *range))) {
    return;
  }
  dropTextSelection();
  noteMarkupEdit(documentSlotOf(pane), slot.openPage);
}

void highlightSelection() {
  const MarkupStyle style = highlightStyle();
  CreateMarkup(FPDF_ANNOT_HIGHLIGHT, style.red, style.green, style.blue, style.alpha);
}

void strikeSelectionThrough() {
  const MarkupStyle style = strikethroughStyle();
  CreateMarkup(FPDF_ANNOT_STRIKEOUT, style.red, style.green, style.blue, style.alpha);
}

std::int32_t HitTestMarkup(int pane, int clientX, int clientY) {
  if (pane < 0 || pane > 1) return -1;
  PaneSlot& slot = session.panes[pane];
  if (!slot.page || !slot.pageBitmap) return -1;
  const PixelRect rect = paneRect(pane);
  const PagePoint point = paneToPage(pane, clientX - rect.left, clientY - rect.top);
  const std::vector<MarkupBox>& boxes = markupBoxesOf(slot);
  const auto topmost = std::find_if(boxes.rbegin(), boxes.rend(),
                                    [&](const MarkupBox& box) { return contains(box, point); });
  return topmost == boxes.rend() ? -1 : topmost->annot;
}

void pickMarkup(int pane, int clientX, int clientY) {
  session.markupMenuAnnot = HitTestMarkup(pane, clientX, clientY);
  session.markupMenuPage = session.markupMenuAnnot < 0 ? -1 : session.panes[pane].openPage;
}

void forgetPickedMarkup() {
  session.markupMenuPage = -1;
  session.markupMenuAnnot = -1;
}

void RemoveMarkup() {
  if (session.viewerRole) return;
  const std::int32_t page = std::exchange(session.markupMenuPage, -1);
  const std::int32_t annot = std::exchange(session.markupMenuAnnot, -1);
  DocumentSlot& slot = documentSlotOf(session.activePane);
  if (!slot.document || annot < 0) return;
  separatePagesToAnnotate(slot.document.get());
  if (removeWithPopup(slot.document.get(), page, annot)) noteMarkupEdit(slot, page);
}

void forgetMarkupBoxes(FPDF_DOCUMENT document, std::int32_t page) {
  for (const int pane : panesHoldingPage(document, page)) session.panes[pane].markupBoxes.reset();
}

}  // namespace quillmere
