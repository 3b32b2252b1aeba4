#pragma once

#include <vector>

#include "session/document_slot.h"

// The only ways in which a document changes its slot. Turns of pages stay where they are.
namespace quillmere {

// Moves everything that `from` holds into `to`, whose own document closes first, together with the
// pages that panes have open of it. Pages of the moved document stay open: its handle is the same.
void moveDocument(DocumentSlot& from, DocumentSlot& to);

// Closes the slot's document, after the pages that panes have open of it, and empties the slot.
void clearDocument(DocumentSlot& slot);

// Puts a freshly loaded document in the place of the slot's one, which closes with its pages. Path,
// page numbers, zoom, pan, zoom mode and turns stay; the panes that held a page get it from the new
// document, as far as it has so many. Their pictures are left to the caller.
void swapDocument(DocumentSlot& slot, DocumentHandle fresh);

// Notes that the document was edited in memory and that its file lacks the edit.
void markEdited(DocumentSlot& slot);

// The panes, hidden ones included, whose document this is; none for null.
std::vector<int> panesHolding(FPDF_DOCUMENT document);
// Those of them that have this zero-based page open, whatever number they show.
std::vector<int> panesHoldingPage(FPDF_DOCUMENT document, int page);

}  // namespace quillmere
