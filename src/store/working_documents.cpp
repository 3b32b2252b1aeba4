#include "store/working_documents.h"

#include "platform/text.h"
#include "session/session.h"
#include "store/data_folder.h"
#include "store/settings.h"

namespace quillmere {

// The built-in binder is not made yet, so there is nothing to add a document to.
void AddToWorkingDocuments(const std::u16string&, WorkingDocsMode) {}

void LoadWorkingDocuments() {}

void RemoveFromRecentFiles(const std::u16string& path) {
  const auto erased = std::erase_if(session.settings.recentFiles, [&](const std::u16string& entry) {
    return platform::equalIgnoringCase(entry, path);
  });
  if (erased > 0) SaveRecentFiles();
}

std::u16string WorkingDocsPath() {
  const std::u16string folder = GetAppDataFolder();
  return folder.empty() ? folder : folder + u"WorkingDocs.lst";
}

}  // namespace quillmere
