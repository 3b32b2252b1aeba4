#include "view/page_memory.h"

#include <quillmere_engine.h>

#include <algorithm>
#include <iterator>

#include "core/session.h"

namespace quillmere {

namespace {

bool anyViewTurned() {
  return std::any_of(std::begin(session.panes), std::end(session.panes),
                     [](const PaneSlot& slot) { return slot.documentRotation % 4 != 0; });
}

bool sameAsFile(int pane) {
  return !dirtyOf(pane) && !placementsPending(documentOf(pane)) && !anyPageRotationPending(pane) &&
         !anyViewTurned();
}

}  // namespace

void notePageRead(int pane) {
  if (++session.panes[pane].pagesRead >= kPagesBetweenReleases) noteDocumentRead(pane);
}

void noteDocumentRead(int pane) {
  if (pageCountOf(pane) <= kPagesBetweenReleases || !sameAsFile(pane)) return;
  QuillmereEngine_ReleaseParsedObjects(documentOf(pane));
  session.panes[pane].pagesRead = 0;
}

}  // namespace quillmere
