#pragma once

// The shelf entries of open documents.
namespace quillmere {

// Moves the active document's unsaved state to the shelf. True when it is safe there.
bool ShelveCurrentDocument();

// Writes the unsaved changes of a binder's file to the document itself. True when it has them, also
// when there were none.
bool SaveShelved(int binderIndex, int fileIndex);

// Discards the unsaved changes of a binder's file after asking. Does nothing when there are none on
// the shelf.
void DiscardBinderFile(int binderIndex, int fileIndex);

// Forgets the active document's entry and deletes its copy.
void DropActiveShelfEntry();

// Updates the shelf's record of the pane's document after an edit.
void noteDocumentChanged(int pane);

}  // namespace quillmere
