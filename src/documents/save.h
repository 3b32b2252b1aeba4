#pragma once

#include <string>

#include "documents/save_document.h"
#include "ui/boxes.h"

namespace quillmere {

// Writes the active document to its own file, or to one that the user chooses. Both first ask
// whether to write turns that are still pending.
void SaveCommand();
void SaveAsCommand();

// Asks what to do about unsaved changes before the active document closes; `fileName` may be empty.
// Yes: they were saved. No: there are none, or the user gives them up, and the shelf drops them
// when the document closes. Cancel: the document must stay open.
BoxAnswer PromptSaveBeforeClose(const std::u16string& fileName);

// The two halves of it, for several documents that close together or not at all: asks about changes
// that the active document has, and later does what was answered.
BoxAnswer AskSaveBeforeClose(const std::u16string& fileName);
BoxAnswer FollowCloseAnswer(BoxAnswer answer);

// As above, but never asks about changes that the shelf takes over.
BoxAnswer SaveOrShelveBeforeClose(const std::u16string& fileName);

}  // namespace quillmere
