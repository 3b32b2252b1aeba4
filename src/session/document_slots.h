#pragma once

#include <vector>

#include "session/document_slot.h"

// The only functions that change which document a slot holds. Page turns stay where they are.
namespace quillmere {

// Moves everything that `from` holds into `to`. The document that `to` held closes first, with any
// of its pages that panes have open. Pages of the moved document stay open: its handle is the same.
void moveDocument(DocumentSlot& from, DocumentSlot& to);

// Closes the slot's document, after any of its pages that panes have open, and empties the slot.
void clearDocument(DocumentSlot& slot);

// Replaces the slot's document with a freshly loaded one; the old one closes with its pages. Path,
// page numbers, zoom, pan, zoom mode and turns stay. Panes with an open page load the same page of
// the new document, or its last one if it is shorter. The caller must render them again.
void swapDocument(DocumentSlot& slot, DocumentHandle fresh);

// Loads the page that a pane has open anew, if any; the number shown stays.
void reopenPage(int pane);

// Records that the document was edited in memory and that the edit is not in its file.
void markEdited(DocumentSlot& slot);

// The panes, hidden ones included, that hold this document; empty for null.
std::vector<int> panesHolding(FPDF_DOCUMENT document);
// Those of them that have this zero-based page open, whatever page number they show.
std::vector<int> panesHoldingPage(FPDF_DOCUMENT document, int page);

}  // namespace quillmere
