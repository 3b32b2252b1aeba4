#pragma once

#include <cstdint>
#include <string>

// What a person does to the rows of the binder tree by mouse and keyboard. Rows are named by their
// values; -1 stands for none.
namespace quillmere {

// The selection is about to move to this row. The user is asked about unsaved changes of the
// active document where a document is selected; false when the selection must stay.
bool mayMoveBinderSelection(std::int32_t value);

// The selection has moved there; a document that the user chose is opened.
void binderSelectionMoved(std::int32_t value, bool byUser);

// A left button went down on the tree, which allows the same document to be opened again.
void pressBinderTree();

// A click on a row, which may be the selected one already.
void clickBinderRow(std::int32_t value, bool selected);

// Keys in the tree, for the selected row.
void enterOnBinderRow();
void deleteOnBinderRow(bool shift);
// Moves the selection to the first or the last of the rows beside the selected one.
void moveToBinderSibling(bool last);

// Whether the row's text can be edited in place.
bool mayRenameBinderRow(std::int32_t value);
// The edit has ended with this text. True when the binder now has it as its name.
bool finishBinderRowRename(std::int32_t value, const std::u16string& typed);

}  // namespace quillmere
