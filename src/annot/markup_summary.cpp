#include "annot/markup_summary.h"

#include <fpdf_annot.h>

#include <algorithm>
#include <utility>

#include "annot/read_markups.h"
#include "base/text_format.h"
#include "platform/font_files.h"

namespace quillmere {

namespace {

constexpr double kLineHeight = 1.34;       // of the font's size
constexpr double kSpaceAfterName = 8;      // points
constexpr double kSpaceBeforeHeading = 6;  // points
constexpr double kSpaceAfterMarkup = 6;    // points

constexpr SummaryStyle kTitle{"Helvetica-Bold", true, 16, 0, 30, 30, 30};
constexpr SummaryStyle kDocumentName{"Helvetica", false, 10, 0, 110, 110, 110};
constexpr SummaryStyle kHeading{"Helvetica-Bold", true, 12, 0, 40, 70, 140};
constexpr SummaryStyle kMarkup{"Helvetica", false, 10, 14, 70, 70, 70};
constexpr SummaryStyle kNote{"Helvetica", false, 10, 28, 0, 0, 0};

bool startPage(SummaryState& state) {
  const int index = FPDF_GetPageCount(state.document.get());
  state.page.reset(FPDFPage_New(state.document.get(), index, state.pageWidth, state.pageHeight));
  state.position = state.pageHeight - state.margin;
  return state.page != nullptr;
}

void finishPage(SummaryState& state) {
  if (state.page) FPDFPage_GenerateContent(state.page.get());
  state.page.reset();
}

const SummaryRuler& rulerOf(SummaryState& state, const SummaryStyle& style) {
  return state.rulers.try_emplace(&style, style.bold, style.size).first->second;
}

// A system font with the line's characters; null when there is none to embed.
FPDF_FONT embeddedFontFor(SummaryState& state, const std::u16string& line, bool bold) {
  const std::u16string face = platform::faceFor(line);
  const auto [found, fresh] = state.fonts.try_emplace(bold ? face + u" bold" : face);
  if (fresh) {
    const std::vector<std::uint8_t> file = platform::fontFile(face, bold);
    constexpr FPDF_BOOL kByCharacterIds = 1;
    if (!file.empty()) {
      found->second.reset(FPDFText_LoadFont(state.document.get(), file.data(),
                                            static_cast<std::uint32_t>(file.size()),
                                            FPDF_FONT_TRUETYPE, kByCharacterIds));
    }
  }
  return found->second.get();
}

// The standard fonts have only the characters of western languages; any other would come out as
// another letter.
FPDF_PAGEOBJECT newTextObject(SummaryState& state, const std::u16string& line,
                              const SummaryStyle& style) {
  const auto size = static_cast<float>(style.size);
  std::u16string text = line;
  FPDF_PAGEOBJECT object = nullptr;
  const FPDF_FONT embedded =
      fitsStandardFonts(line) ? nullptr : embeddedFontFor(state, line, style.bold);
  if (embedded != nullptr) {
    object = FPDFPageObj_CreateTextObj(state.document.get(), embedded, size);
  } else {
    object = FPDFPageObj_NewTextObj(state.document.get(), style.fontName, size);
    text = fittedToStandardFonts(line);
  }
  if (object != nullptr) FPDFText_SetText(object, reinterpret_cast<FPDF_WIDESTRING>(text.c_str()));
  return object;
}

void placeLine(SummaryState& state, const std::u16string& line, const SummaryStyle& style) {
  const FPDF_PAGEOBJECT object = newTextObject(state, line, style);
  if (object == nullptr) return;
  FPDFPageObj_SetFillColor(object, style.red, style.green, style.blue, 255);
  FPDFPageObj_Transform(object, 1, 0, 0, 1, state.margin + style.indent, state.position);
  FPDFPage_InsertObject(state.page.get(), object);
}

std::u16string markupLine(const MarkupSummaryItem& item) {
  const std::u16string label = item.isHighlight ? u"Highlight" : u"Strikethrough";
  if (item.text.empty()) return label + u" (no text)";
  return label + u": \"" + item.text + u"\"";
}

void emitItems(SummaryState& state, const std::vector<MarkupSummaryItem>& items) {
  std::int32_t page = -1;
  for (const MarkupSummaryItem& item : items) {
    if (item.page != page) {
      page = item.page;
      state.position -= kSpaceBeforeHeading;
      SummaryEmitText(state, formatText(u"Page %d", {decimal(page + 1)}), kHeading);
    }
    SummaryEmitText(state, markupLine(item), kMarkup);
    if (!item.note.empty()) SummaryEmitText(state, u"Note: " + item.note, kNote);
    state.position -= kSpaceAfterMarkup;
  }
}

}  // namespace

std::vector<MarkupSummaryItem> collectSummaryItems(FPDF_DOCUMENT document) {
  std::vector<MarkupSummaryItem> items;
  for (FoundMarkup& found : readMarkups(document)) {
    items.push_back({found.entry.page, found.entry.subtype == FPDF_ANNOT_HIGHLIGHT, found.quadTop,
                     std::move(found.entry.text), std::move(found.entry.note)});
  }
  std::stable_sort(items.begin(), items.end(),
                   [](const MarkupSummaryItem& a, const MarkupSummaryItem& b) {
                     return a.page != b.page ? a.page < b.page : a.top > b.top;
                   });
  return items;
}

void SummaryEmitText(SummaryState& state, const std::u16string& text, const SummaryStyle& style) {
  const double width = state.pageWidth - 2 * state.margin - style.indent;
  const double height = style.size * kLineHeight;
  for (const std::u16string& line : WrapSummaryText(text, rulerOf(state, style), width)) {
    if (state.position - height < state.margin) {
      finishPage(state);
      if (!startPage(state)) return;
    }
    state.position -= height;
    if (!line.empty()) placeLine(state, line, style);
  }
}

DocumentHandle buildMarkupSummary(const std::vector<MarkupSummaryItem>& items,
                                  const std::u16string& documentName) {
  SummaryState state;
  state.document.reset(FPDF_CreateNewDocument());
  if (!state.document || !startPage(state)) return nullptr;
  SummaryEmitText(state, u"Markup Summary", kTitle);
  SummaryEmitText(state, documentName, kDocumentName);
  state.position -= kSpaceAfterName;
  emitItems(state, items);
  finishPage(state);
  state.fonts.clear();
  return std::move(state.document);
}

}  // namespace quillmere
