#include "session/page_memory.h"

#include <quillmere_engine.h>

#include "session/session.h"

namespace quillmere {

void notePageRead(int pane) {
  if (++session.panes[pane].pagesRead >= kPagesBetweenReleases) noteDocumentRead(pane);
}

void noteDocumentRead(int pane) {
  if (pageCountOf(pane) <= kPagesBetweenReleases || documentSlotOf(pane).altered) return;
  QuillmereEngine_ReleaseParsedObjects(documentOf(pane));
  session.panes[pane].pagesRead = 0;
}

}  // namespace quillmere
