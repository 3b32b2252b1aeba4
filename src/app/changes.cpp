#include "session/changes.h"

#include <cassert>
#include <vector>

#include "annot/annotations.h"
#include "annot/markup_list.h"
#include "annot/markup_tip.h"
#include "annot/markups.h"
#include "annot/placements.h"
#include "annot/text_dialog.h"
#include "app/commands.h"
#include "app/repaint.h"
#include "documents/shelve.h"
#include "nav/bookmarks.h"
#include "nav/find.h"
#include "nav/idle_reading.h"
#include "nav/markup_tree.h"
#include "panels/binder_panel.h"
#include "panels/stamp_panel.h"
#include "platform/main_window.h"
#include "session/document_slots.h"
#include "session/loaded_file.h"
#include "session/session.h"
#include "view/selection.h"
#include "view/status.h"

namespace quillmere {

namespace {

bool reporting = false;

// A change reported while another is being handled would update things in an order that nobody can
// read here.
class Report {
 public:
  Report() {
    assert(!reporting);
    reporting = true;
  }
  Report(const Report&) = delete;
  Report& operator=(const Report&) = delete;
  ~Report() { reporting = false; }
};

void repaint() {
  platform::invalidateMainWindow(false);
}

void repaintAll() {
  platform::invalidateMainWindow(true);
}

void tellShelf(FPDF_DOCUMENT document) {
  const std::vector<int> panes = panesHolding(document);
  if (!panes.empty()) noteDocumentChanged(panes.front());
}

}  // namespace

// Syncs the hits before the page is painted with them.
void pageShown(int pane) {
  const Report report;
  forgetMarkupTip();
  if (session.findBarVisible) FindSyncToPage(pane);
  dropTextSelection();
  repaintPages();
  refreshTitle();
  refreshStatus();
}

void pictureChanged() {
  const Report report;
  HideMarkupTip();
  repaint();
}

void zoomChanged() {
  const Report report;
  HideMarkupTip();
  refreshStatus();
  repaint();
}

void panesLaidOut() {
  const Report report;
  HideMarkupTip();
  refreshStatus();
  repaintAll();
}

// The search and the tree belong to the active pane's document, which is another one only in
// TwoDocuments.
void activePaneChanged() {
  const Report report;
  forgetPickedMarkup();
  if (inTwoDocuments()) {
    forgetSearch();
    RebuildNavigationTree();
  }
  refreshStatus();
  refreshMenus();
  repaint();
}

void turnsChanged(int pane) {
  const Report report;
  HideMarkupTip();
  refreshStatus();
  repaint();
  noteDocumentChanged(pane);
}

// The tree shows the active pane's document. Reading the page's markups and moving rows takes
// longer than drawing the page.
void markupsChanged(FPDF_DOCUMENT document, int page) {
  const Report report;
  forgetMarkupBoxes(document, page);
  forgetMarkupTip();
  forgetAnnotationSearch();
  collectPageLater(document, page);
  if (document == documentOf(session.activePane)) platform::doAfterPainting(updateMarkupRows);
  tellShelf(document);
  repaint();
}

void allMarkupsChanged(FPDF_DOCUMENT document) {
  const Report report;
  for (PaneSlot& slot : session.panes) slot.markupBoxes.reset();
  forgetPickedMarkup();
  forgetMarkupTip();
  forgetAnnotationSearch();
  InvalidateMarkupList();
  platform::doAfterPainting(updateMarkupRows);
  tellShelf(document);
  repaint();
}

// Bookmarks lead to pages that have other numbers now.
void pagesChanged(FPDF_DOCUMENT document) {
  const Report report;
  for (PaneSlot& slot : session.panes) slot.markupBoxes.reset();
  forgetMarkupTip();
  forgetAnnotationSearch();
  InvalidateMarkupList();
  tellShelf(document);
  refreshMenus();
  refreshTitle();
  refreshStatus();
  repaintPages();
  platform::updatePages();
  RebuildNavigationTree();
}

// Annotations may have other numbers now.
void placementsChanged(FPDF_DOCUMENT document) {
  const Report report;
  for (PaneSlot& slot : session.panes) slot.markupBoxes.reset();
  forgetAnnotationSearch();
  forgetPickedMarkup();
  forgetMarkupTip();
  tellShelf(document);
  repaint();
}

void stampLibraryChanged() {
  const Report report;
  dropMissingStamps();
  platform::invalidateStampPanel();
}

// The page shows what Add Text would place; the panel's buttons show which dialogs are open.
void toolDialogsChanged() {
  repaint();
  platform::invalidateStampPanel();
}

void hitsChanged() {
  const Report report;
  HideMarkupTip();
  FindStatusText();
  repaint();
}

void documentsLeaving() {
  const Report report;
  dropGesture();
  forgetPickedMarkup();
  forgetMarkupTip();
  const bool searched = forgetSearch();
  const bool selected = dropTextSelection();
  if (searched || selected) repaint();
}

// Stamps and text are placed in SinglePage only.
void documentsChanged() {
  const Report report;
  settleClosedDocuments();
  platform::doAfterPainting(keepSourcesOpen);
  readAnnotationsWhenIdle();
  if (session.viewMode != ViewMode::SinglePage) {
    closeTextDialog();
    ClearPlacementSelection();
  }
  refreshMenus();
  refreshTitle();
  refreshStatus();
  repaintAll();
}

// The search goes on: its hits are where they were.
void documentReplaced(int pane) {
  const Report report;
  settleClosedDocuments();
  platform::doAfterPainting(keepSourcesOpen);
  forgetPickedMarkup();
  forgetMarkupTip();
  const bool selected =
      session.selection.pane >= 0 && documentOf(session.selection.pane) == documentOf(pane);
  if (selected) dropTextSelection();
  if (documentOf(session.activePane) == documentOf(pane)) RebuildNavigationTree();
  refreshMenus();
  refreshTitle();
  refreshStatus();
  repaintAll();
  readAnnotationsWhenIdle();
}

void outlineChanged() {
  const Report report;
  RebuildNavigationTree();
}

void commandsChanged() {
  const Report report;
  refreshMenus();
}

// The tree may be working on its rows now, and an open must show its page first.
void bindersChanged() {
  const Report report;
  platform::postBinderTreeRebuild();
}

void binderFilesChanged() {
  const Report report;
  RepaintBinderTree();
}

}  // namespace quillmere
