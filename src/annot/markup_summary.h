#pragma once

#include <fpdf_edit.h>
#include <fpdfview.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "annot/summary_text.h"
#include "session/pdfium_handles.h"

// A report in a document of its own: which text is marked on which page, and each note.
namespace quillmere {

struct MarkupSummaryItem {
  std::int32_t page = 0;     // zero-based, of the source
  bool isHighlight = false;  // false for a strikethrough
  double top = 0;            // largest top edge of its quads in page points
  std::u16string text;       // the text under the quads
  std::u16string note;
};

// The markups of a document, page by page and from the top of each page down.
std::vector<MarkupSummaryItem> collectSummaryItems(FPDF_DOCUMENT document);

// The style of one element of the report; lengths in points.
struct SummaryStyle {
  const char* fontName;  // a standard font
  bool bold;
  double size;
  double indent;
  std::uint8_t red;
  std::uint8_t green;
  std::uint8_t blue;
};

struct FontCloser {
  void operator()(FPDF_FONT font) const { FPDFFont_Close(font); }
};
using FontHandle = std::unique_ptr<std::remove_pointer_t<FPDF_FONT>, FontCloser>;

// A report being written. Lengths in points.
struct SummaryState {
  DocumentHandle document;
  PageHandle page;      // the open page
  double position = 0;  // of the last baseline, from the page's bottom
  double pageWidth = 612;
  double pageHeight = 792;
  double margin = 54;
  // System fonts that the report embeds, by face and "bold"; null where that failed.
  std::map<std::u16string, FontHandle> fonts;
  std::map<const SummaryStyle*, SummaryRuler> rulers;
};

// Breaks a text into lines and puts them on the report, adding pages as needed.
void SummaryEmitText(SummaryState& state, const std::u16string& text, const SummaryStyle& style);

// The whole report; null when the document could not be created.
DocumentHandle buildMarkupSummary(const std::vector<MarkupSummaryItem>& items,
                                  const std::u16string& documentName);

}  // namespace quillmere
