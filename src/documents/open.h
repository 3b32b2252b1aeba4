#pragma once

#include <string>

#include "store/working_documents.h"

namespace quillmere {

// The only way to open a file. True when it is open afterwards.
//   loadPath        the file that is read
//   workingDocsMode how it joins the documents in use
//   displayPath     the path that is shown for the document and that it is saved to; null for
//                   `loadPath`. They differ when a shelf copy stands in for a document.
// The user is told why when it fails. With `askBeforeReplace` the user is also asked about unsaved
// changes of the document that it replaces.
bool openDocument(const std::u16string* loadPath, int pane, WorkingDocsMode workingDocsMode,
                  bool askBeforeReplace, const std::u16string* displayPath);

enum class OpenResult {
  Opened,
  Failed,    // it could not be opened, or the user kept the document that it would have replaced
  Declined,  // the user wants neither of the two versions that it has
};

// The same for a document as the user left it: if it has unsaved changes on the shelf, the copy
// with them is read. The shelf is asked after the question about what is replaced, which may have
// put this very document there. A document that the other pane shows is not looked for on it.
OpenResult openAsLeft(const std::u16string& path, int pane, WorkingDocsMode workingDocsMode,
                      bool askBeforeReplace);

}  // namespace quillmere
