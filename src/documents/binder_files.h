#pragma once

// Removes documents from binders, with the questions that this raises: unsaved changes are never
// lost without one. Does nothing in a viewer.
namespace quillmere {

// Removes a file from its binder, after closing it if it is open from there. True when it was
// removed. With `confirm` a file without shelved changes is asked about too.
bool RemoveFileFromBinder(int index, int fileIndex, bool confirm);

// The same for every file of a binder, with one question for all. True when all were removed.
bool RemoveAllFromBinder(int index);

}  // namespace quillmere
