#pragma once

#include "session/binder_tree.h"

// What the rows and menus of the binder panel do. They bring the tree up to date.
namespace quillmere {

// Asks for a new binder file, makes it and shows it.
void AddNewBinder();

// Asks for binder files and loads them.
void AddExistingBinder();

// Asks for documents and adds those that the user does not refuse at the gate to the binder.
void AddFilesDialog(int index);

// Opens the document of a row, if it is still there. Parameters as for `openBinderEntry`.
void openBinderRow(const BinderRow& row, bool askBeforeReplace, bool otherPaneCounts);

// What the Delete key does. For a head it asks whether to close or delete it. A document is removed
// after a question, with `quick` only if unsaved changes would be lost.
void deleteBinderRow(const BinderRow& row, bool quick);

void removeBinderFile(const BinderRow& row, bool confirm);

}  // namespace quillmere
