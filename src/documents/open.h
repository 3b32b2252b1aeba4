#pragma once

#include <string>

#include "store/working_documents.h"

namespace quillmere {

// The single way in which a file is opened. True when it is open afterwards.
//   loadPath        the file that is read
//   workingDocsMode how it joins the documents in use
//   displayPath     the path that the document bears and is saved to; null for `loadPath`. They
//                   differ when a shelf copy stands in for a document.
// The user is told why when it fails; with `askBeforeReplace` also asked about unsaved changes of
// what is being replaced.
bool openDocument(const std::u16string* loadPath, int pane, WorkingDocsMode workingDocsMode,
                  bool askBeforeReplace, const std::u16string* displayPath);

}  // namespace quillmere
