#include "documents/save_document.h"

#include <optional>
#include <utility>

#include "annot/placements.h"
#include "annot/write_placements.h"
#include "base/limits.h"
#include "documents/close.h"
#include "documents/document_loader.h"
#include "documents/join_working_documents.h"
#include "documents/save_target.h"
#include "documents/shelve.h"
#include "platform/file_properties.h"
#include "platform/files.h"
#include "session/changes.h"
#include "session/document_slots.h"
#include "session/gesture.h"
#include "session/loaded_file.h"
#include "session/page_memory.h"
#include "session/session.h"
#include "store/sibling_file.h"
#include "store/write_document_copy.h"
#include "ui/boxes.h"
#include "view/render.h"

namespace quillmere {

namespace {

constexpr const char16_t* kChangedText =
    u"The file was changed by another program, so it cannot be saved.";
constexpr const char16_t* kFailedText = u"Failed to save PDF.";
constexpr const char16_t* kNoSiblingText = u"Could not write temporary file.";

// One save as it passes through the steps.
struct SaveJob {
  int pane = 0;
  std::u16string path;
  std::u16string readFrom;   // the file that has the document as it was
  bool replacesOwn = false;  // the file that the document is shown under or read from
};

DocumentSlot& slotOf(const SaveJob& job) {
  return documentSlotOf(job.pane);
}

bool fail(const std::u16string& text, BoxIcon icon = BoxIcon::Error) {
  showNotice(text, icon);
  return false;
}

// Why nothing may take the place of the file, from the first byte to the last; null for no reason.
const char16_t* obstacle(const SaveJob& job) {
  switch (sourceState(slotOf(job).loadedFrom)) {
    case SourceState::Changed:
      return kChangedText;
    case SourceState::Lost:
      return job.replacesOwn ? kNoSiblingText : kFailedText;
    case SourceState::Sound:
      break;
  }
  const bool replaced = samePath(slotOf(job).path, job.path) && ownFileReplaced(slotOf(job));
  return replaced ? kChangedText : nullptr;
}

bool mayBegin(const SaveJob& job) {
  if (!slotOf(job).document) return fail(u"No document is open.", BoxIcon::Warning);
  if (job.path.empty() || job.path.size() >= kPathBufferUnits) {
    return fail(u"The destination path is too long.");
  }
  if (targetInUse(job.path, job.pane)) return fail(kFailedText);
  const char16_t* reason = obstacle(job);
  return reason == nullptr || fail(reason);
}

// The document shows what it showed before; its page may look different where it is a shorter one.
void drawReopened(const DocumentSlot& slot, const ClosedDocument& closed) {
  for (const int pane : panesHolding(slot.document.get())) {
    if (session.panes[pane].openPage == closed.openPage[pane]) {
      redrawPicture(pane);
    } else {
      refreshPicture(pane);
    }
  }
}

void showReopened(const SaveJob& job, const ClosedDocument& closed) {
  const DocumentSlot& slot = slotOf(job);
  drawReopened(slot, closed);
  documentReplaced(job.pane);
}

// A new path is a new document to the lists.
void adoptPath(const SaveJob& job) {
  DocumentSlot& slot = slotOf(job);
  if (samePath(slot.path, job.path)) return;
  forgetDocumentBinder(slot.path);
  slot.path = job.path;
  joinWorkingDocuments(job.path, kWorkingDocsToHead);
}

// What a document that could not take its file's place is opened from.
struct Refuge {
  DocumentHandle document;
  LoadedFile from;
  bool edited = true;  // it has the edits; otherwise only the sibling has them
};

// Memory comes first: the sibling stays free for the next save to overwrite.
Refuge findRefuge(const std::u16string& sibling, const std::u16string& readFrom) {
  Refuge refuge;
  refuge.document = loadDocumentIntoMemory(sibling);
  if (refuge.document) return refuge;
  for (const std::u16string& file : {sibling, readFrom}) {
    refuge.from = loadedFileNow(file);
    refuge.document = loadDocumentFile(file);
    refuge.edited = file == sibling;
    if (refuge.document) break;
  }
  return refuge;
}

// The user may have opened the sibling in the other pane, or changed it with another program.
bool stillOurs(const KeptSibling& kept, int pane) {
  return kept.stamp && platform::fileStamp(kept.path) == kept.stamp &&
         !targetInUse(kept.path, pane);
}

// The sibling has more edits than the one of an earlier save, until now perhaps the only file with
// them, which it overwrites. Returns it with the path that it has afterwards.
KeptSibling overwriteOlderSibling(KeptSibling written, const KeptSibling& older,
                                  const SaveJob& job) {
  if (older.path.empty() || !stillOurs(older, job.pane)) return written;
  if (isNamedSibling(older.path, job.path) && platform::replaceFile(written.path, older.path)) {
    written.path = older.path;
  } else {
    platform::deleteFile(older.path);
  }
  return written;
}

// Those that are annotations may have other indexes in a file without the edits, so they are read
// again. Pending ones stay.
void readWrittenPlacementsAgain(FPDF_DOCUMENT document) {
  ClearPlacementSelection();
  for (auto& [page, list] : session.placements) {
    std::erase_if(list, [](const Placement& placement) { return !placement.pending(); });
  }
  session.waitingPlacements = document;
}

// The sibling is the only file with the edits, so it stays and the window shows what it holds.
bool keepEditsOpen(const SaveJob& job, KeptSibling written, const ClosedDocument& closed,
                   const std::optional<platform::FileStamp>& known) {
  DocumentSlot& slot = slotOf(job);
  noteSaveFailed(job.path);
  KeptSibling sibling =
      overwriteOlderSibling(std::move(written), std::exchange(slot.keptSibling, {}), job);
  Refuge refuge = findRefuge(sibling.path, job.readFrom);
  const bool reloads = refuge.edited && refuge.document && closed.ownedPlacements;
  reopenDocument(slot, std::move(refuge.document), std::move(refuge.from), closed);
  if (refuge.edited) slot.keptSibling = std::move(sibling);
  slot.dirty = slot.document != nullptr;
  slot.altered = slot.dirty;
  slot.knownFile = known;
  if (reloads) loadPlacementsLater(slot.document.get());
  if (!refuge.edited && closed.ownedPlacements) {
    readWrittenPlacementsAgain(slot.document.get());
  }
  if (!slot.document && closed.ownedPlacements) ClearPlacements();
  showReopened(job, closed);
  return fail(u"Saved to temporary file but could not replace original.");
}

void dropOldSibling(const SaveJob& job) {
  const KeptSibling kept = std::exchange(slotOf(job).keptSibling, {});
  if (!kept.path.empty() && stillOurs(kept, job.pane)) platform::deleteFile(kept.path);
}

bool reopenSaved(const SaveJob& job, const ClosedDocument& closed) {
  DocumentSlot& slot = slotOf(job);
  LoadedFile from = loadedFileNow(job.path);
  reopenDocument(slot, loadDocumentFile(job.path), std::move(from), closed);
  dropOldSibling(job);
  adoptPath(job);
  DropShelfCopy(job.path);
  if (slot.document && (!inTwoDocuments() || closed.ownedPlacements)) {
    loadPlacementsLater(slot.document.get());
  } else if (closed.ownedPlacements) {
    ClearPlacements();
  }
  showReopened(job, closed);
  if (!slot.document) {
    showNotice(u"Saved successfully but could not reopen the file.", BoxIcon::Error);
  }
  return true;
}

// PDFium holds the file open that it reads, and a failed write must leave it whole: the new bytes
// take its place once they are all there and the document is closed.
bool replaceOwnFile(const SaveJob& job) {
  DocumentSlot& slot = slotOf(job);
  std::u16string sibling;
  const char16_t* reason = kNoSiblingText;
  const bool written = writeWithPlacements(slot.document.get(), [&] {
    sibling = writeDocumentBeside(slot.document.get(), job.path);
    if (!sibling.empty()) reason = obstacle(job);
    return reason == nullptr;
  });
  if (!written) {
    if (!sibling.empty()) platform::deleteFile(sibling);
    return fail(reason);
  }
  platform::copyAlternateStreams(job.path, sibling);
  platform::copyFileProperties(job.path, sibling);
  KeptSibling asWritten{sibling, platform::fileStamp(sibling)};
  // Nobody keeps others from writing to it while the document is closed, or in memory.
  const auto known = platform::fileStamp(slot.path);
  noteSaveBegins(job.path, sibling);
  const ClosedDocument closed = closeToReopen(slot);
  if (!takePlace(sibling, job.path)) return keepEditsOpen(job, std::move(asWritten), closed, known);
  return reopenSaved(job, closed);
}

void drawAll(FPDF_DOCUMENT document) {
  for (const int pane : panesHolding(document)) {
    if (session.panes[pane].page) redrawPicture(pane);
  }
}

// The document stays open as it is and goes on reading its old file.
bool writeOtherFile(const SaveJob& job) {
  DocumentSlot& slot = slotOf(job);
  const char16_t* reason = nullptr;
  const auto mayTakePlace = [&] { return (reason = obstacle(job)) == nullptr; };
  const bool written = writeWithPlacements(slot.document.get(), [&] {
    return WriteDocumentCopy(slot.document.get(), job.path, mayTakePlace);
  });
  if (!written) return fail(reason != nullptr ? reason : kFailedText);
  adoptPath(job);
  keepEdits(job.pane);  // the user gave them up under the old path
  slot.knownFile = platform::fileStamp(job.path);
  slot.dirty = false;
  if (session.placementDocument == slot.document.get()) loadPlacementsLater(slot.document.get());
  // Writing has read all of it.
  noteDocumentRead(job.pane);
  drawAll(slot.document.get());
  // Turns that were left out are unsaved changes of the new path.
  if (hasUnsavedChanges(job.pane)) noteDocumentChanged(job.pane);
  documentsChanged();
  return true;
}

// A file that is replaced gets the name by which it is replaced: not another letter case, and no
// short name.
std::u16string spellingKept(const DocumentSlot& slot, const std::u16string& path) {
  if (samePath(slot.path, path)) return slot.path;
  if (samePath(slot.loadedFrom.path, path)) return slot.loadedFrom.path;
  const std::u16string full = platform::absolutePath(path);
  return full.size() < kPathBufferUnits ? full : path;
}

}  // namespace

bool SaveDocumentTo(int pane, const std::u16string& path) {
  if (session.viewerRole) return false;
  const DocumentWork work;
  SaveJob job;
  job.pane = pane;
  DocumentSlot& slot = slotOf(job);
  job.path = spellingKept(slot, path);
  job.readFrom = slot.loadedFrom.path.empty() ? slot.path : slot.loadedFrom.path;
  job.replacesOwn = samePath(slot.path, path) || samePath(slot.loadedFrom.path, path);
  // The user gives that file another purpose.
  if (samePath(slot.keptSibling.path, path)) slot.keptSibling = {};
  // A document without edits is read until the end, too.
  guardLoadedFile(slot.loadedFrom);
  if (!mayBegin(job)) return false;
  dropGesture();
  return job.replacesOwn ? replaceOwnFile(job) : writeOtherFile(job);
}

}  // namespace quillmere
