#pragma once

#include <string>

namespace quillmere {

// Ends every document in every mode. Zoom, pan and zoom mode of the panes stay.
void closeAllDocuments();

// Closes a document wherever it is shown, after its file was deleted or moved.
void closeDocumentByPath(const std::u16string& path);

// Closes the pane's document after asking about unsaved changes.
void closeCommand(int pane);

// Forgets which binder a document was opened from.
void forgetDocumentBinder(const std::u16string& path);

}  // namespace quillmere
