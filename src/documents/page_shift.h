#pragma once

#include <cstdint>
#include <optional>

// What is kept by page number follows its page when pages come or go.
namespace quillmere {

// Pages that came into a document, or the one that left it. Zero-based.
struct PageShift {
  std::int32_t first = 0;  // the first new page, or the deleted one
  std::int32_t added = 0;  // how many new pages; -1 for a deleted one
};

// The number that a page has afterwards; nullopt for the deleted page.
std::optional<std::int32_t> shiftedPage(std::int32_t page, const PageShift& shift);

// Renumbers what the session keeps by page of the pane's document: its placements with their
// selection, its pending turns, and the jumps of the panes that hold it. What belongs to a deleted
// page goes.
void shiftPages(int pane, const PageShift& shift);

}  // namespace quillmere
