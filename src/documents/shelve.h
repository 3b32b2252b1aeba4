#pragma once

#include "store/shelf.h"

// The shelf entries of open documents. A document is shelved only if it was opened from a binder
// that is still loaded, the documents in use among them; changes of any other document are asked
// about when it is left.
namespace quillmere {

// True when the pane's document has changes that would go with it. Turns of pages that wait for
// another mode are among them, and are shown from then on.
bool changesWouldBeLost(int pane);

// Moves the unsaved state of the pane's document, or of the active one, to the shelf: a copy with
// its edits, placements and turns is written and found sound, and the entry says so. The document
// stays open and counts as saved. False when it does not belong on the shelf or no copy could be
// written; earlier changes on the shelf then stay as they were.
bool shelveDocument(int pane);
bool ShelveCurrentDocument();

// The same, without a question, for every open document with unsaved changes.
void shelveChangedDocuments();

// Updates the shelf's record of the pane's document after an edit: it has unsaved changes, or has
// them no longer. A record with a copy always counts as changed. No copy is made.
void noteDocumentChanged(int pane);

// The user gave up the unsaved changes of the pane's document. Its entry is dropped when the
// document closes, not before: the document may stay, as when the next one cannot be opened.
void giveUpEdits(int pane);
// The document stays after all, or its changes are safe.
void keepEdits(int pane);
// True when an open document of this path is about to lose its changes.
bool editsGivenUp(const std::u16string& path);

// What waited until documents closed: drops entries that were given up, deletes copies that were
// open.
void settleClosedDocuments();

// Writes the unsaved changes of a binder's file to the document itself, which need not be open, and
// tells the user if that fails. True when it has them, also when there were none; the caller then
// drops the entry.
bool SaveShelved(int binderIndex, int fileIndex);

// Forgets the active document's entry and deletes its copy.
void DropActiveShelfEntry();

}  // namespace quillmere
