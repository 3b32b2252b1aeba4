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
  double quadTop = kNoQuadTop;  // largest top edge of its quads in page points
};

// The zero-based pages that have any, ascending. Finding them reads no page content.
std::vector<int> pagesWithMarkups(FPDF_DOCUMENT document);

// The markups of one page in the order of its annotations; empty when the page cannot be loaded.
std::vector<FoundMarkup> readMarkupsOfPage(FPDF_DOCUMENT document, int page);

// The markups of the whole document, page by page. If the session holds the document, memory is
// released on the way.
std::vector<FoundMarkup> readMarkups(FPDF_DOCUMENT document);

}  // namespace quillmere
