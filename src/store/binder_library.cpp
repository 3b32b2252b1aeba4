#include "store/binder_library.h"

#include "platform/text.h"
#include "session/session.h"

namespace quillmere {

int FindBinder(std::u16string_view path) {
  for (std::size_t i = 0; i < session.binderLibrary.size(); ++i) {
    if (platform::equalIgnoringCase(session.binderLibrary[i].path, path)) {
      return static_cast<int>(i);
    }
  }
  return kNoBinder;
}

int WorkingDocumentsIndex() {
  for (std::size_t i = 0; i < session.binderLibrary.size(); ++i) {
    if (session.binderLibrary[i].isWorkingDocuments) return static_cast<int>(i);
  }
  return kNoBinder;
}

bool IsValidBinder(int index) {
  return index >= 0 && static_cast<std::size_t>(index) < session.binderLibrary.size();
}

bool IsValidBinderFile(int index, int fileIndex) {
  if (!IsValidBinder(index)) return false;
  const auto& files = session.binderLibrary[static_cast<std::size_t>(index)].files;
  return fileIndex >= 0 && static_cast<std::size_t>(fileIndex) < files.size();
}

// Binder files are not read yet.
int LoadBinder(const std::u16string&) {
  return kNoBinder;
}

// Views are kept in binder files, which are not read yet.
void SaveCurrentView(int) {}

}  // namespace quillmere
