#include "documents/join_working_documents.h"

#include "platform/text.h"
#include "session/session.h"
#include "store/binder_library.h"
#include "store/recent_files.h"

namespace quillmere {

void joinWorkingDocuments(const std::u16string& path, WorkingDocsMode how) {
  if (how == kWorkingDocsLeaveAlone) return;
  AddToWorkingDocuments(path, how);
  RemoveFromRecentFiles(path);
  const int binder = WorkingDocumentsIndex();
  if (binder == kNoBinder) return;
  session.documentBinders[platform::toLower(path)] =
      session.binderLibrary[static_cast<std::size_t>(binder)].path;
}

}  // namespace quillmere
