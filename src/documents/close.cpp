#include "documents/close.h"

#include "annot/placements.h"
#include "base/limits.h"
#include "documents/save.h"
#include "platform/text.h"
#include "session/changes.h"
#include "session/document_slots.h"
#include "session/session.h"
#include "store/binder_library.h"
#include "store/binder_views.h"
#include "view/rotation.h"

namespace quillmere {

namespace {

// Zoom, pan and zoom mode stay for the next document.
void closePaneDocument(int pane) {
  PaneSlot& slot = session.panes[pane];
  dropPaneView(pane);
  clearDocument(slot);
  slot.currentPage = 0;
  slot.documentRotation = 0;
  slot.pageRotations.clear();
  forgetWaitingTurns(pane);
}

void closeSharedDocument() {
  clearDocument(session.active);
  session.active.pageRotations.clear();
}

// The session holds the placements of one document; once that one is closed, load those of `pane`'s
// document. Pending placements of a document that stays open are not reloaded, since its file does
// not have them yet.
void rehomePlacements(int pane) {
  const FPDF_DOCUMENT document = session.panes[pane].document.get();
  session.selectedPlacementPage = -1;
  if (document == nullptr) {
    ClearPlacements();
  } else if (session.placementDocument != document) {
    loadPlacementsLater(document);
  }
}

bool paneShows(int pane, const std::u16string& path) {
  const PaneSlot& slot = session.panes[pane];
  return slot.document && !slot.path.empty() && platform::equalIgnoringCase(slot.path, path);
}

void closePanesShowing(const std::u16string& path) {
  for (int pane = 0; pane < 2; ++pane) {
    if (!paneShows(pane, path)) continue;
    closePaneDocument(pane);
    rehomePlacements(1 - pane);
  }
}

void closeShownIn(int pane) {
  SaveCurrentView(pane);
  if (!inTwoDocuments()) {
    closeAllDocuments();
    return;
  }
  documentsLeaving();
  forgetDocumentBinder(session.panes[pane].path);
  closePaneDocument(pane);
  rehomePlacements(1 - pane);
  outlineChanged();
  documentsChanged();
}

}  // namespace

void closeAllDocuments() {
  documentsLeaving();
  closePaneDocument(0);
  closePaneDocument(1);
  closeSharedDocument();
  outlineChanged();
  ClearPlacements();
  session.documentBinders.clear();
  documentsChanged();
}

void closeDocumentByPath(const std::u16string& path) {
  if (!inTwoDocuments()) {
    closeAllDocuments();
    return;
  }
  documentsLeaving();
  // `path` may refer to a pane's own path, which is cleared here.
  const std::u16string closing = path;  // NOLINT(performance-unnecessary-copy-initialization)
  closePanesShowing(closing);
  forgetDocumentBinder(closing);
  outlineChanged();
  documentsChanged();
}

void closeCommand(int pane) {
  const DocumentWork work;
  const std::u16string name = fileNameOf(pathOf(pane));
  if (PromptSaveBeforeClose(name) != BoxAnswer::Cancel) closeShownIn(pane);
}

void forgetDocumentBinder(const std::u16string& path) {
  if (!path.empty()) session.documentBinders.erase(platform::toLower(path));
}

}  // namespace quillmere
