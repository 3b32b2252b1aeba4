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

// What a document leaves in the session when it closes to be opened again from another file.
struct ClosedDocument {
  int openPage[2] = {-1, -1};    // by pane, zero-based; -1 for a pane without a page of it
  bool ownedPlacements = false;  // the session's placements are its own
  bool waited = false;           // its placements were still to be read
};

// Closes the slot's document with its pages and pictures, so that its file can be replaced. Path,
// page numbers, zoom, pan, zoom mode, turns and placements stay for `reopenDocument`.
ClosedDocument closeToReopen(DocumentSlot& slot);

// Gives a slot that `closeToReopen` emptied the freshly loaded document, clean and unaltered. Panes
// that had a page open load the same page of it, or its last one if it is shorter; the caller must
// render them. The session's placements are its own if they were the closed one's. Null leaves the
// slot without a document.
void reopenDocument(DocumentSlot& slot, DocumentHandle fresh, LoadedFile from,
                    const ClosedDocument& closed);

// Opens a zero-based page of the pane's document under the number that the pane shows now.
void openUnderItsNumber(int pane, std::int32_t page);
// Loads the page that a pane has open anew, if any; the number shown stays.
void reopenPage(int pane);

// Records that the document was edited in memory and that the edit is not in its file.
void markEdited(DocumentSlot& slot);
// Records the edit alone, for one that no save has to write.
void markAltered(DocumentSlot& slot);

// Gives each page number of the document a page of its own, with none of its pages open: an edit of
// a page that stands at several places would change all of them. That may change the page tree, so
// the document counts as altered afterwards. Fast from the second call on, since pages that come
// later are new ones.
void separatePages(DocumentSlot& slot);

// The panes, hidden ones included, that hold this document; empty for null.
std::vector<int> panesHolding(FPDF_DOCUMENT document);
// Those of them that have this zero-based page open, whatever page number they show.
std::vector<int> panesHoldingPage(FPDF_DOCUMENT document, int page);

}  // namespace quillmere
