#include "documents/open.h"

#include <fpdfview.h>

#include <utility>

#include "annot/placements.h"
#include "annot/write_placements.h"
#include "base/limits.h"
#include "base/product.h"
#include "base/text_format.h"
#include "documents/close.h"
#include "documents/document_loader.h"
#include "documents/join_working_documents.h"
#include "documents/save.h"
#include "documents/save_target.h"
#include "documents/settle_shelf.h"
#include "documents/shelve.h"
#include "integration/internet_gate.h"
#include "platform/main_window.h"
#include "platform/text.h"
#include "session/changes.h"
#include "session/document_slots.h"
#include "session/loaded_file.h"
#include "session/session.h"
#include "store/binder_library.h"
#include "store/binder_views.h"
#include "store/shelf.h"
#include "ui/boxes.h"
#include "view/navigation.h"
#include "view/render.h"
#include "view/rotation.h"

namespace quillmere {

namespace {

// One open as it passes through the steps.
struct OpenJob {
  std::u16string loadPath;
  std::u16string displayPath;
  bool hasLoadPath = false;
  int pane = 0;
  WorkingDocsMode workingDocsMode = kWorkingDocsLeaveAlone;
  bool askBeforeReplace = false;
  bool looksOnShelf = false;
  bool splits = false;          // the shown document moves to the other pane
  bool replacing = false;       // the new document takes another one's place
  std::u16string replacedPath;  // of the document that made room
  ShelfDecision shelf;
};

enum class StepResult { Next, Opened, Stopped, Declined };

StepResult checkPathLimit(OpenJob& job) {
  if (job.hasLoadPath && job.loadPath.size() < kPathBufferUnits &&
      job.displayPath.size() < kPathBufferUnits) {
    return StepResult::Next;
  }
  showNotice(u"The file's path is too long to open.", BoxIcon::Error);
  return StepResult::Stopped;
}

StepResult decideReplacement(OpenJob& job) {
  job.splits = session.viewMode == ViewMode::IndependentPages && session.active.document &&
               !job.loadPath.empty() && !samePath(job.displayPath, session.active.path);
  job.replacing = !job.splits && documentOf(job.pane) != nullptr;
  return StepResult::Next;
}

// Writes pending placements into the pane's document before the session forgets them. Its panes
// draw them as part of the page from then on.
void keepPendingPlacements(int pane) {
  const FPDF_DOCUMENT document = documentOf(pane);
  if (!placementsPending(document)) return;
  writePendingPlacements(document);
  markEdited(documentSlotOf(pane));
  for (const int each : panesHolding(document)) redrawPicture(each);
  noteDocumentChanged(pane);
}

StepResult askAboutInactivePane(const OpenJob& job) {
  if (!changesWouldBeLost(job.pane)) return StepResult::Next;
  const std::u16string& path = session.panes[job.pane].path;
  const BoxAnswer answer =
      showBox(formatText(u"Document \"%s\" has unsaved changes.\n\nSave them before replacing it?",
                         {fileNameOf(path)}),
              kProductTitle, BoxButtons::YesNoCancel, BoxIcon::Warning);
  if (answer == BoxAnswer::No) giveUpEdits(job.pane);
  if (answer == BoxAnswer::No) return StepResult::Next;
  if (answer != BoxAnswer::Yes) return StepResult::Stopped;
  commitRotations(job.pane);
  const std::u16string saved = path;  // NOLINT(performance-unnecessary-copy-initialization)
  if (!SaveDocumentTo(job.pane, saved)) return StepResult::Stopped;
  if (!hasUnsavedChanges(job.pane)) DropShelfEntry(saved);
  return StepResult::Next;
}

StepResult askBeforeReplacing(OpenJob& job) {
  if (!job.askBeforeReplace || !job.replacing) return StepResult::Next;
  if (inTwoDocuments() && job.pane != session.activePane) return askAboutInactivePane(job);
  const std::u16string name = fileNameOf(pathOf(session.activePane));
  return SaveOrShelveBeforeClose(name) == BoxAnswer::Cancel ? StepResult::Stopped
                                                            : StepResult::Next;
}

bool otherPaneShows(const OpenJob& job) {
  const int other = 1 - job.pane;
  return inTwoDocuments() && !job.loadPath.empty() && session.panes[other].document &&
         samePath(session.panes[other].path, job.displayPath);
}

// The question before this one may have put the very document that is opened on the shelf. Changes
// that the user gave up there are not brought back.
StepResult lookOnShelf(OpenJob& job) {
  if (!job.looksOnShelf || otherPaneShows(job) || editsGivenUp(job.displayPath)) {
    return StepResult::Next;
  }
  job.shelf = settleShelfCopy(job.displayPath);
  if (!job.shelf.opens) return StepResult::Declined;
  job.loadPath = job.shelf.loadPath;
  return StepResult::Next;
}

StepResult passGate(OpenJob& job) {
  return CheckInternetZone(job.loadPath) ? StepResult::Next : StepResult::Stopped;
}

StepResult leaveReplacedDocument(OpenJob& job) {
  if (!job.replacing) return StepResult::Next;
  SaveCurrentView(job.pane);
  job.replacedPath = pathOf(job.pane);
  return StepResult::Next;
}

StepResult clearSearchAndSelection(OpenJob&) {
  documentsLeaving();
  return StepResult::Next;
}

// A document that could not be replaced keeps its binder, so this comes once the new one is there.
void enterInLists(const OpenJob& job) {
  forgetDocumentBinder(job.replacedPath);
  joinWorkingDocuments(job.displayPath, job.workingDocsMode);
}

// Makes one pane's document the one that both panes show.
void shareDocumentOfPane(int pane) {
  gatherTurns(pane);
  PaneSlot& owner = session.panes[pane];
  moveDocument(owner, session.active);
  session.active.pageRotations = std::exchange(owner.pageRotations, {});
}

// A file that the other pane shows is not loaded a second time: both panes then show that document.
StepResult collapseOntoOtherPane(OpenJob& job) {
  const int other = 1 - job.pane;
  PaneSlot& target = session.panes[job.pane];
  if (!otherPaneShows(job)) return StepResult::Next;
  if (session.placementDocument == target.document.get()) ClearPlacements();
  clearDocument(target);
  shareDocumentOfPane(other);
  session.viewMode = ViewMode::IndependentPages;
  if (session.placementDocument != session.active.document.get()) {
    loadPlacementsLater(session.active.document.get());
  }
  target.documentRotation = session.panes[other].documentRotation;
  target.pageRotations.clear();
  clearJumpHistories(job.pane);
  goToPage(job.pane, 0, false);
  outlineChanged();
  enterInLists(job);
  documentsChanged();
  return StepResult::Opened;
}

// Moves the shown document to the other pane to make room for the new one.
StepResult splitPanes(OpenJob& job) {
  if (!job.splits) return StepResult::Next;
  gatherTurns(job.pane);
  dropPaneView(job.pane);

  PaneSlot& keeper = session.panes[1 - job.pane];
  moveDocument(session.active, keeper);
  keeper.pageRotations = std::exchange(session.active.pageRotations, {});

  PaneSlot& target = session.panes[job.pane];
  target.pageRotations.clear();
  target.documentRotation = 0;

  session.viewMode = ViewMode::TwoDocuments;
  const bool pageExists = keeper.currentPage >= 0 && keeper.currentPage < keeper.pageCount;
  goToPage(1 - job.pane, pageExists ? keeper.currentPage : 0, false);
  commandsChanged();
  return StepResult::Next;
}

// Updates the window first, so that it does not show closed or moved documents behind the box.
StepResult reportLoadFailure(unsigned long error) {
  outlineChanged();
  documentsChanged();
  showLoadFailure(error);
  return StepResult::Stopped;
}

// The path stays, so that the user can still step through its folder if the next document fails to
// load.
void closeSharedDocument() {
  if (session.placementDocument == session.active.document.get()) ClearPlacements();
  std::u16string path = session.active.path;
  clearDocument(session.active);
  session.active.path = std::move(path);
  session.active.pageRotations.clear();
}

void adoptSharedDocument(DocumentHandle document, const std::u16string& path) {
  ClearPlacements();
  session.active.pageCount = FPDF_GetPageCount(document.get());
  session.active.document = std::move(document);
  session.active.path = path;
  for (PaneSlot& pane : session.panes) {
    pane.documentRotation = 0;
    // These turns belong to the document that the pane had in TwoDocuments, not to this one.
    pane.pageRotations.clear();
  }
  clearJumpHistories();
}

// A long outline takes longer to read than the page takes to paint.
void showPageThenOutline() {
  platform::updatePages();
  outlineChanged();
}

void showFirstPages() {
  session.panes[0].currentPage = 0;
  if (session.viewMode != ViewMode::SinglePage) session.panes[1].currentPage = 0;
  goToPage(0, 0, false);
  if (session.viewMode == ViewMode::IndependentPages) goToPage(1, 0, false);
}

// The old document closes before the new one loads, so a failed load leaves an empty window.
StepResult openForBothPanes(OpenJob& job) {
  if (inTwoDocuments()) return StepResult::Next;
  closeSharedDocument();
  LoadedFile from = loadedFileNow(job.loadPath);
  DocumentHandle document = loadDocumentFile(job.loadPath);
  if (!document) return reportLoadFailure(FPDF_GetLastError());
  adoptSharedDocument(std::move(document), job.displayPath);
  noteLoaded(session.active, std::move(from));
  showFirstPages();
  loadPlacementsLater(session.active.document.get());
  showPageThenOutline();
  return StepResult::Next;
}

void adoptPaneDocument(int pane, DocumentHandle document, const std::u16string& path) {
  PaneSlot& slot = session.panes[pane];
  keepPendingPlacements(1 - pane);
  ClearPlacements();
  dropPaneView(pane);
  clearDocument(slot);
  slot.pageCount = FPDF_GetPageCount(document.get());
  slot.document = std::move(document);
  slot.currentPage = 0;
  slot.documentRotation = 0;
  slot.pageRotations.clear();
  forgetWaitingTurns(pane);
  clearJumpHistories(pane);
  slot.path = path;
}

// The new document loads before the old one closes, so a failed load leaves the pane as it was.
StepResult openIntoPane(OpenJob& job) {
  if (!inTwoDocuments()) return StepResult::Next;
  LoadedFile from = loadedFileNow(job.loadPath);
  DocumentHandle document = loadDocumentFile(job.loadPath);
  if (!document) return reportLoadFailure(FPDF_GetLastError());
  adoptPaneDocument(job.pane, std::move(document), job.displayPath);
  noteLoaded(session.panes[job.pane], std::move(from));
  loadPlacementsLater(session.panes[job.pane].document.get());
  goToPage(job.pane, 0, false);
  if (job.pane == session.activePane) showPageThenOutline();
  return StepResult::Next;
}

// The file may be missing for now, and come back as another one.
void noteKnownFile(const OpenJob& job) {
  if (job.shelf.known) documentSlotOf(job.pane).knownFile = job.shelf.known;
}

StepResult finishOpening(OpenJob& job) {
  noteKnownFile(job);
  enterInLists(job);
  followShelfDecision(job.displayPath, job.shelf);
  documentsChanged();
  return StepResult::Opened;
}

using OpenStep = StepResult (*)(OpenJob&);

// The questions and the gate come before anything changes; the user cannot refuse any later step.
// There are two loading steps: the mode left by the earlier steps decides which one acts.
constexpr OpenStep kOpenSteps[] = {
    checkPathLimit,
    decideReplacement,
    askBeforeReplacing,
    lookOnShelf,
    passGate,
    leaveReplacedDocument,
    clearSearchAndSelection,
    collapseOntoOtherPane,
    splitPanes,
    openForBothPanes,
    openIntoPane,
    finishOpening,
};

StepResult runSteps(OpenJob& job) {
  StepResult result = StepResult::Next;
  for (const OpenStep step : kOpenSteps) {
    result = step(job);
    if (result != StepResult::Next) break;
  }
  return result;
}

}  // namespace

bool openDocument(const std::u16string* loadPath, int pane, WorkingDocsMode workingDocsMode,
                  bool askBeforeReplace, const std::u16string* displayPath) {
  OpenJob job;
  job.hasLoadPath = loadPath != nullptr;
  if (loadPath != nullptr) job.loadPath = *loadPath;
  job.displayPath = displayPath != nullptr ? *displayPath : job.loadPath;
  job.pane = pane;
  job.workingDocsMode = workingDocsMode;
  job.askBeforeReplace = askBeforeReplace;
  const DocumentWork work;
  return runSteps(job) == StepResult::Opened;
}

OpenResult openAsLeft(const std::u16string& path, int pane, WorkingDocsMode workingDocsMode,
                      bool askBeforeReplace) {
  OpenJob job;
  job.hasLoadPath = true;
  job.loadPath = path;
  job.displayPath = path;
  job.looksOnShelf = true;
  job.pane = pane;
  job.workingDocsMode = workingDocsMode;
  job.askBeforeReplace = askBeforeReplace;
  const DocumentWork work;
  const StepResult result = runSteps(job);
  if (result == StepResult::Declined) return OpenResult::Declined;
  return result == StepResult::Opened ? OpenResult::Opened : OpenResult::Failed;
}

}  // namespace quillmere
