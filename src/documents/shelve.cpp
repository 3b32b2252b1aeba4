#include "documents/shelve.h"

#include "session/session.h"
#include "store/shelf.h"

namespace quillmere {

// Nothing is shelved yet, so that unsaved changes are always asked about.
bool ShelveCurrentDocument() {
  return false;
}

void DropActiveShelfEntry() {
  DropShelfEntry(pathOf(session.activePane));
}

void noteDocumentChanged(int) {}

}  // namespace quillmere
