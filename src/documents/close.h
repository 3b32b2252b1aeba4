#pragma once

#include <string>

namespace quillmere {

// Closes every document, in any mode. The panes keep their zoom, pan and zoom mode.
void closeAllDocuments();

// Closes a document wherever it is shown, after its file was deleted or moved.
void closeDocumentByPath(const std::u16string& path);

// Closes the pane's document after asking about unsaved changes.
void closeCommand(int pane);

// Forgets which binder a document was opened from.
void forgetDocumentBinder(const std::u16string& path);

}  // namespace quillmere
