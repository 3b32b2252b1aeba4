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
#include "documents/save.h"
#include "integration/internet_gate.h"
#include "platform/main_window.h"
#include "platform/text.h"
#include "session/changes.h"
#include "session/document_slots.h"
#include "session/session.h"
#include "store/binder_library.h"
#include "store/binder_views.h"
#include "store/recent_files.h"
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
  bool splits = false;     // the shown document moves to the other pane
  bool replacing = false;  // the new document takes another one's place
};

enum class StepResult { Next, Opened, Stopped };

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
               !job.loadPath.empty() &&
               !platform::equalIgnoringCase(job.displayPath, session.active.path);
  job.replacing = !job.splits && documentOf(job.pane) != nullptr;
  return StepResult::Next;
}

// Writes pending placements into their document before the session forgets them. Its panes draw
// them as part of the page from then on.
void keepPendingPlacements(DocumentSlot& slot) {
  const FPDF_DOCUMENT document = slot.document.get();
  if (!placementsPending(document)) return;
  WritePendingStamps(document);
  WritePendingTextDrops(document);
  markEdited(slot);
  for (const int pane : panesHolding(document)) redrawPicture(pane);
}

StepResult askAboutInactivePane(const OpenJob& job) {
  if (!hasUnsavedChanges(job.pane)) return StepResult::Next;
  const std::u16string& path = session.panes[job.pane].path;
  const BoxAnswer answer =
      showBox(formatText(u"Document \"%s\" has unsaved changes.\n\nSave them before replacing it?",
                         {fileNameOf(path)}),
              kProductTitle, BoxButtons::YesNoCancel, BoxIcon::Warning);
  if (answer == BoxAnswer::No) return StepResult::Next;
  if (answer != BoxAnswer::Yes) return StepResult::Stopped;
  commitRotations(job.pane);
  return SaveDocumentTo(job.pane, std::u16string(path)) ? StepResult::Next : StepResult::Stopped;
}

StepResult askBeforeReplacing(OpenJob& job) {
  if (!job.askBeforeReplace || !job.replacing) return StepResult::Next;
  if (inTwoDocuments() && job.pane != session.activePane) return askAboutInactivePane(job);
  const std::u16string name = fileNameOf(pathOf(session.activePane));
  return SaveOrShelveBeforeClose(name) == BoxAnswer::Cancel ? StepResult::Stopped
                                                            : StepResult::Next;
}

StepResult passGate(OpenJob& job) {
  return CheckInternetZone(job.loadPath) ? StepResult::Next : StepResult::Stopped;
}

StepResult leaveReplacedDocument(OpenJob& job) {
  if (!job.replacing) return StepResult::Next;
  SaveCurrentView(job.pane);
  forgetDocumentBinder(pathOf(job.pane));
  return StepResult::Next;
}

StepResult clearSearchAndSelection(OpenJob&) {
  documentsLeaving();
  return StepResult::Next;
}

void joinWorkingDocuments(const OpenJob& job) {
  if (job.workingDocsMode == kWorkingDocsLeaveAlone) return;
  AddToWorkingDocuments(job.displayPath, job.workingDocsMode);
  RemoveFromRecentFiles(job.displayPath);
  const int binder = WorkingDocumentsIndex();
  if (binder == kNoBinder) return;
  session.documentBinders[platform::toLower(job.displayPath)] =
      session.binderLibrary[static_cast<std::size_t>(binder)].path;
}

// Makes one pane's document the one that both panes show.
void shareDocumentOfPane(int pane) {
  PaneSlot& owner = session.panes[pane];
  moveDocument(owner, session.active);
  session.active.pageRotations = std::exchange(owner.pageRotations, {});
}

// A file that the other pane shows is not loaded a second time: both panes then show that document.
StepResult collapseOntoOtherPane(OpenJob& job) {
  const int other = 1 - job.pane;
  PaneSlot& target = session.panes[job.pane];
  if (!inTwoDocuments() || job.loadPath.empty() || !session.panes[other].document ||
      !platform::equalIgnoringCase(session.panes[other].path, job.displayPath)) {
    return StepResult::Next;
  }
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
  joinWorkingDocuments(job);
  documentsChanged();
  return StepResult::Opened;
}

// Moves the shown document to the other pane to make room for the new one.
StepResult splitPanes(OpenJob& job) {
  if (!job.splits) return StepResult::Next;
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
  showNotice(formatText(u"Could not open PDF.\n(PDFium error %lu)",
                        {decimal(static_cast<std::int64_t>(error))}),
             BoxIcon::Error);
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
  DocumentHandle document = loadDocumentFile(job.loadPath);
  if (!document) return reportLoadFailure(FPDF_GetLastError());
  adoptSharedDocument(std::move(document), job.displayPath);
  showFirstPages();
  loadPlacementsLater(session.active.document.get());
  showPageThenOutline();
  return StepResult::Next;
}

void adoptPaneDocument(int pane, DocumentHandle document, const std::u16string& path) {
  PaneSlot& slot = session.panes[pane];
  keepPendingPlacements(session.panes[1 - pane]);
  ClearPlacements();
  dropPaneView(pane);
  clearDocument(slot);
  slot.pageCount = FPDF_GetPageCount(document.get());
  slot.document = std::move(document);
  slot.currentPage = 0;
  slot.documentRotation = 0;
  slot.pageRotations.clear();
  clearJumpHistories(pane);
  slot.path = path;
}

// The new document loads before the old one closes, so a failed load leaves the pane as it was.
StepResult openIntoPane(OpenJob& job) {
  if (!inTwoDocuments()) return StepResult::Next;
  DocumentHandle document = loadDocumentFile(job.loadPath);
  if (!document) return reportLoadFailure(FPDF_GetLastError());
  adoptPaneDocument(job.pane, std::move(document), job.displayPath);
  loadPlacementsLater(session.panes[job.pane].document.get());
  goToPage(job.pane, 0, false);
  if (job.pane == session.activePane) showPageThenOutline();
  return StepResult::Next;
}

StepResult finishOpening(OpenJob& job) {
  joinWorkingDocuments(job);
  documentsChanged();
  return StepResult::Opened;
}

using OpenStep = StepResult (*)(OpenJob&);

// The question and the gate come before anything changes; the user cannot refuse any later step.
// There are two loading steps: the mode left by the earlier steps decides which one acts.
constexpr OpenStep kOpenSteps[] = {
    checkPathLimit,        decideReplacement,
    askBeforeReplacing,    passGate,
    leaveReplacedDocument, clearSearchAndSelection,
    collapseOntoOtherPane, splitPanes,
    openForBothPanes,      openIntoPane,
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

}  // namespace quillmere
