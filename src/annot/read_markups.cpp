#include "annot/read_markups.h"

#include <fpdf_edit.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>

#include "annot/annotations.h"
#include "annot/text_under_quads.h"
#include "session/document_slots.h"
#include "session/pdfium_handles.h"
#include "session/session.h"

namespace quillmere {

namespace {

constexpr FPDF_ANNOTATION_SUBTYPE kSubtypes[] = {FPDF_ANNOT_HIGHLIGHT, FPDF_ANNOT_STRIKEOUT};

struct Color {
  unsigned red = 255;
  unsigned green = 235;
  unsigned blue = 60;
  unsigned alpha = 255;
};

using ObjectColorReader = FPDF_BOOL(FPDF_CALLCONV*)(FPDF_PAGEOBJECT, unsigned*, unsigned*,
                                                    unsigned*, unsigned*);

std::optional<Color> colorOfObjects(FPDF_ANNOTATION annotation, ObjectColorReader read,
                                    bool mustShow) {
  const int count = FPDFAnnot_GetObjectCount(annotation);
  for (int i = 0; i < count; ++i) {
    const FPDF_PAGEOBJECT object = FPDFAnnot_GetObject(annotation, i);
    Color color;
    if (read(object, &color.red, &color.green, &color.blue, &color.alpha) &&
        (!mustShow || color.alpha != 0)) {
      return color;
    }
  }
  return std::nullopt;
}

// For an annotation with an appearance the engine does not report the annotation's own colour.
Color colorOf(FPDF_ANNOTATION annotation) {
  Color color;
  if (FPDFAnnot_GetColor(annotation, FPDFANNOT_COLORTYPE_Color, &color.red, &color.green,
                         &color.blue, &color.alpha)) {
    return color;
  }
  if (const auto fill = colorOfObjects(annotation, FPDFPageObj_GetFillColor, true)) return *fill;
  return colorOfObjects(annotation, FPDFPageObj_GetStrokeColor, false).value_or(Color());
}

std::vector<PageBox> quadsOf(FPDF_ANNOTATION annotation) {
  std::vector<PageBox> quads;
  const std::size_t count = FPDFAnnot_CountAttachmentPoints(annotation);
  for (std::size_t i = 0; i < count; ++i) {
    if (const auto box = boxOfQuad(annotation, i)) quads.push_back(*box);
  }
  return quads;
}

// The engine reports a rectangle of zeros for an annotation without one.
std::optional<PageBox> rectOf(FPDF_ANNOTATION annotation, const std::vector<PageBox>& quads) {
  FS_RECTF rect{};
  if (FPDFAnnot_HasKey(annotation, "Rect") && FPDFAnnot_GetRect(annotation, &rect)) {
    const auto [left, right] = std::minmax(rect.left, rect.right);
    const auto [bottom, top] = std::minmax(rect.bottom, rect.top);
    if (left < right || bottom < top) return PageBox{left, top, right, bottom};
  }
  if (quads.empty()) return std::nullopt;
  return boxAround(quads);
}

// A file may give components beyond their range, and PDFium passes them on.
unsigned channel(unsigned value) {
  return std::min(value, 255u);
}

FoundMarkup readMarkup(FPDF_ANNOTATION annotation, int page, TextUnderQuads& text) {
  FoundMarkup found;
  MarkupEntry& entry = found.entry;
  const std::vector<PageBox> quads = quadsOf(annotation);
  if (!quads.empty()) found.quadTop = boxAround(quads).top;
  entry.page = page;
  entry.subtype = FPDFAnnot_GetSubtype(annotation);
  const Color color = colorOf(annotation);
  entry.color = channel(color.red) | channel(color.green) << 8 | channel(color.blue) << 16;
  if (const auto rect = rectOf(annotation, quads)) {
    entry.hasRect = true;
    entry.left = rect->left;
    entry.top = rect->top;
    entry.right = rect->right;
    entry.bottom = rect->bottom;
  }
  entry.text = text.under(quads);
  entry.note = ReadAnnotString(annotation, "Contents");
  return found;
}

}  // namespace

std::vector<int> pagesWithMarkups(FPDF_DOCUMENT document) {
  return pagesWithAnnotations(document, kSubtypes);
}

// Loading a page parses all of its contents, so use what a pane has open.
std::vector<FoundMarkup> readMarkupsOfPage(FPDF_DOCUMENT document, int page) {
  std::vector<FoundMarkup> markups;
  const ReachedPage reached(document, page);
  if (reached.get() == nullptr) return markups;
  const std::vector<int> panes = panesHoldingPage(document, page);
  TextOfPage ownText;
  if (panes.empty()) ownText.reset(reached.get());
  const TextOfPage& textPage = panes.empty() ? ownText : session.panes[panes.front()].textPage;
  std::optional<TextUnderQuads> text;
  const int count = FPDFPage_GetAnnotCount(reached.get());
  for (int i = 0; i < count; ++i) {
    const AnnotationHandle annotation(FPDFPage_GetAnnot(reached.get(), i));
    if (!isMarkup(annotation.get())) continue;
    if (!text) text.emplace(textPage.get());
    markups.push_back(readMarkup(annotation.get(), page, *text));
  }
  return markups;
}

std::vector<FoundMarkup> readMarkups(FPDF_DOCUMENT document) {
  std::vector<FoundMarkup> all;
  std::size_t read = 0;
  for (const int page : pagesWithMarkups(document)) {
    std::vector<FoundMarkup> markups = readMarkupsOfPage(document, page);
    std::move(markups.begin(), markups.end(), std::back_inserter(all));
    releasePagesRead(document, ++read);
  }
  return all;
}

}  // namespace quillmere
