#include "documents/shelve.h"

#include "session/session.h"
#include "store/shelf.h"

namespace quillmere {

// Nothing is shelved yet, so the user is always asked about unsaved changes.
bool ShelveCurrentDocument() {
  return false;
}

void DropActiveShelfEntry() {
  DropShelfEntry(pathOf(session.activePane));
}

void noteDocumentChanged(int) {}

}  // namespace quillmere
