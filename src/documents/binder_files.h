#pragma once

// What takes documents out of binders, with the questions that this raises: unsaved changes are
// never lost without one. Without effect in a viewer. The caller rebuilds the tree.
namespace quillmere {

// Takes a file out of its binder, after closing it where it is open from there. True when it is
// out. With `confirm` a file without shelved changes is asked about too.
bool RemoveFileFromBinder(int index, int fileIndex, bool confirm);

// The same for every file of a binder, with one question for all. True when they are out.
bool RemoveAllFromBinder(int index);

}  // namespace quillmere
