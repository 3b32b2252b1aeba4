#pragma once

// Throws unsaved changes away, after asking. What the document's file holds is loaded first and the
// changes on the shelf are dropped last, so a file that cannot be loaded costs nothing on the
// shelf. Nothing happens in a viewer.
namespace quillmere {

// The active document is read again from its file.
void DiscardActive();

// The same for a file of a binder, which need not be open. Does nothing without unsaved changes.
void DiscardBinderFile(int binderIndex, int fileIndex);

// The same for every document with unsaved changes.
void DiscardAll();

}  // namespace quillmere
