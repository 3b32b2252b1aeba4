#include "core/close.h"

#include "annot/placement_record.h"
#include "core/limits.h"
#include "core/session.h"
#include "core/waiting_opens.h"
#include "nav/bookmarks.h"
#include "nav/find.h"
#include "platform/main_window.h"
#include "platform/message_box.h"
#include "platform/text.h"
#include "store/binder_library.h"
#include "store/save.h"
#include "view/selection.h"
#include "view/status.h"

namespace quillmere {

namespace {

// A pane without a document. Zoom, pan and zoom mode stay for the next one.
void forgetPaneDocument(PaneSlot& slot) {
  slot.document.reset();
  slot.currentPage = 0;
  slot.pageCount = 0;
  slot.path.clear();
  slot.documentRotation = 0;
  slot.pageRotations.clear();
  slot.dirty = false;
}

void closePaneDocument(int pane) {
  dropPaneView(pane);
  forgetPaneDocument(session.panes[pane]);
}

void closeSharedDocument() {
  session.active.document.reset();
  session.active.pageCount = 0;
  session.active.path.clear();
  session.active.pageRotations.clear();
  session.active.dirty = false;
}

void showThatDocumentsChanged() {
  refreshTitle();
  refreshStatus();
  platform::invalidateMainWindow(true);
}

// The session holds the placements of one document; once that one is gone, those of `pane`'s. What
// is pending on a document that stays is not read anew, since its file does not have it yet.
void rehomePlacements(int pane) {
  const FPDF_DOCUMENT document = session.panes[pane].document.get();
  session.selectedPlacementPage = -1;
  if (document == nullptr) {
    ClearPlacements();
  } else if (session.placementDocument != document) {
    LoadPlacements(document);
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
  RebuildNavigationTree();
}

void closeShownIn(int pane) {
  SaveCurrentView(pane);
  if (session.viewMode != ViewMode::TwoDocuments) {
    closeAllDocuments();
    return;
  }
  forgetDocumentBinder(session.panes[pane].path);
  closePaneDocument(pane);
  rehomePlacements(1 - pane);
  FindClear();
  clearTextSelection();
  RebuildNavigationTree();
  showThatDocumentsChanged();
}

}  // namespace

void closeAllDocuments() {
  closePaneDocument(0);
  closePaneDocument(1);
  closeSharedDocument();
  ClearNavigationTree();
  ClearPlacements();
  session.documentBinders.clear();
  FindClear();
  clearTextSelection();
  showThatDocumentsChanged();
}

void closeDocumentByPath(const std::u16string& path) {
  if (session.viewMode != ViewMode::TwoDocuments) {
    closeAllDocuments();
    return;
  }
  // The path may be that of a pane, which loses it here.
  const std::u16string closing = path;  // NOLINT(performance-unnecessary-copy-initialization)
  closePanesShowing(closing);
  forgetDocumentBinder(closing);
  FindClear();
  clearTextSelection();
  showThatDocumentsChanged();
}

void closeCommand(int pane) {
  beginDocumentWork();
  const std::u16string name = fileNameOf(pathOf(pane));
  if (PromptSaveBeforeClose(name) != platform::BoxAnswer::Cancel) closeShownIn(pane);
  endDocumentWork();
}

void forgetDocumentBinder(const std::u16string& path) {
  if (!path.empty()) session.documentBinders.erase(platform::toLower(path));
}

}  // namespace quillmere
