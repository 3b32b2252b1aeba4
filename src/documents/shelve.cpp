#include "documents/shelve.h"

#include <string>

#include "documents/save.h"
#include "platform/sound.h"
#include "session/session.h"
#include "store/binder_library.h"
#include "store/shelf.h"
#include "view/rotation.h"

namespace quillmere {

// Nothing is shelved yet, so the user is always asked about unsaved changes.
bool ShelveCurrentDocument() {
  return false;
}

// Copies on the shelf are not written back yet, as documents are not: the sound tells that nothing
// was saved.
bool SaveShelved(int binderIndex, int fileIndex) {
  if (session.viewerRole || !IsValidBinderFile(binderIndex, fileIndex)) return false;
  const std::u16string path = binderAt(binderIndex).files[static_cast<std::size_t>(fileIndex)];
  const int pane = paneWithPath(path);
  if (pane >= 0) {
    commitRotations(pane);
    return SaveDocumentTo(pane, path);
  }
  if (!IsShelved(path)) return true;
  platform::beep(platform::Sound::Default);
  return false;
}

// Nothing is shelved yet, so the sound tells that nothing was discarded.
void DiscardBinderFile(int, int) {
  platform::beep(platform::Sound::Default);
}

void DropActiveShelfEntry() {
  DropShelfEntry(pathOf(session.activePane));
}

void noteDocumentChanged(int) {}

}  // namespace quillmere
