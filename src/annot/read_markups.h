#pragma once

#include <fpdf_annot.h>
#include <fpdfview.h>

#include <vector>

#include "session/markup_entry.h"

// Highlights and strikethroughs as a document's pages hold them.
namespace quillmere {

inline constexpr double kNoQuadTop = -1e18;

struct FoundMarkup {
  MarkupEntry entry;
  double quadTop = kNoQuadTop;  // largest top edge of its quads in page points; without quads this
};

// The zero-based pages that have any, ascending. No page's content is read for that.
std::vector<int> pagesWithMarkups(FPDF_DOCUMENT document);

// Those of one page in the order of its annotations; none when the page cannot be loaded.
std::vector<FoundMarkup> readMarkupsOfPage(FPDF_DOCUMENT document, int page);

// Those of the whole document, page by page. Where the session holds the document, memory is given
// back on the way.
std::vector<FoundMarkup> readMarkups(FPDF_DOCUMENT document);

}  // namespace quillmere
