#pragma once

#include <string>

#include "store/working_documents.h"

namespace quillmere {

// A document was opened, or got this path: lists it among the documents in use instead of the
// recent ones, and notes that list as the binder that it was opened from.
void joinWorkingDocuments(const std::u16string& path, WorkingDocsMode how);

}  // namespace quillmere
