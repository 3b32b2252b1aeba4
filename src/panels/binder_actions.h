#pragma once

#include "session/binder_tree.h"

// What the rows and menus of the binder panel do. The tree is rebuilt where it must be.
namespace quillmere {

// Asks for a new binder file, makes it and shows it.
void AddNewBinder();

// Asks for binder files and loads them.
void AddExistingBinder();

// Asks for documents and adds those that the user does not refuse at the gate to the binder.
void AddFilesDialog(int index);

// Opens the document of a row, if it is still there. Parameters as for `openBinderEntry`.
void openBinderRow(const BinderRow& row, bool askBeforeReplace, bool otherPaneCounts);

// What the Delete key does. For a head the user chooses between closing and deleting it; with
// `quick` a document is removed without a question that can be done without.
void deleteBinderRow(const BinderRow& row, bool quick);

void removeBinderFile(const BinderRow& row, bool confirm);

}  // namespace quillmere
